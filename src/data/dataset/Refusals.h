#pragma once

#include <string>

#include "data/value/Errors.h"

/// What only a fault of the program brings about, or follows from a failure told before. What was asked of
/// which dataset is the detail.
namespace tavoline {

/// Throws DatasetError: the dataset is closed.
[[noreturn]] inline void refuseClosed(const std::string& detail) {
  throw DatasetError(
      "Ces données sont fermées, car leur lecture a échoué auparavant : rien n'a été fait. Choisissez "
      "« Actualiser » dans le menu, puis recommencez.",
      detail);
}

/// Throws DatasetError: the dataset is not of the kind, or not in the state, that the operation needs.
[[noreturn]] inline void refuseMisuse(const std::string& detail) {
  throw DatasetError(
      "Le programme a demandé aux données ce qu'elles ne permettent pas à ce moment : rien n'a été fait. "
      "Fermez cette fenêtre et recommencez ; si cela revient, notez ce que vous faisiez et prévenez "
      "l'installateur.",
      detail);
}

}  // namespace tavoline
