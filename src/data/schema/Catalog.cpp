#include "data/schema/Catalog.h"

#include "data/value/Text.h"

namespace tavoline {
namespace {

template <class Named>
const Named* findNamed(const std::vector<Named>& all, std::string_view name) {
  for (const Named& one : all) {
    if (sameName(one.name, name)) return &one;
  }
  return nullptr;
}

}  // namespace

const ColumnInfo* TableInfo::find(std::string_view column) const {
  return findNamed(columns, column);
}

const TableInfo* Catalog::find(std::string_view table) const {
  return findNamed(tables_, table);
}

}  // namespace tavoline
