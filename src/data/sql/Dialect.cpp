#include "data/sql/Dialect.h"

namespace tavoline::sql {

std::string Dialect::quotedName(std::string_view name) {
  std::string result = "\"";
  for (const char c : name) {
    if (c == '"') result += c;
    result += c;
  }
  return result + '"';
}

}  // namespace tavoline::sql
