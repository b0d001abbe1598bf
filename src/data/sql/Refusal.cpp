#include "data/sql/Refusal.h"

#include "data/value/Errors.h"

namespace tavoline::sql {

void refuse(const std::string& detail) {
  throw StatementError(
      "La recherche dans les données n'a pas pu se faire : un nom ou un texte saisi contient une apostrophe, "
      "un guillemet ou un autre signe qu'elle ne comprend pas. Corrigez-le, puis recommencez.",
      detail);
}

}  // namespace tavoline::sql
