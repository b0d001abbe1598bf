#pragma once

#include "data/store/Engine.h"

namespace tavoline::postgres {

/// The engine of a server. Texts compare by code point, since their columns say so. Expects the functions of
/// `functionDefinitions`.
const Engine& engine();

/// What the statements and the tables of a store on a server count on, made before everything else:
/// `tavoline_plie`, which folds the letters of a text as foldCase does.
std::vector<Definition> functionDefinitions();

}  // namespace tavoline::postgres
