#include "data/dataset/ReadRows.h"

#include <variant>

#include "data/sql/Parser.h"
#include "data/sql/Resolver.h"

namespace tavoline {

ValueRows readRows(Store& store, std::string_view select) {
  const auto parsed = sql::parseStatement(select);
  const sql::Select resolved = sql::resolve(std::get<sql::Select>(parsed), *store.catalog());
  const auto rows = store.snapshot()->query(resolved);
  ValueRows read;
  while (rows->next()) {
    auto& row = read.emplace_back();
    row.reserve(resolved.items.size());
    for (std::size_t item = 0; item < resolved.items.size(); ++item) row.push_back(rows->value(item));
  }
  return read;
}

}  // namespace tavoline
