#pragma once

#include "data/store/Engine.h"

namespace tavoline::sqlite {

/// The embedded engine. Expects the SQL function tavoline_like(pattern, text) with the meaning of
/// matchesLike.
const Engine& engine();

}  // namespace tavoline::sqlite
