#include "data/sql/Ast.h"

#include "data/schema/Identity.h"
#include "data/value/Text.h"

namespace tavoline::sql {

ExprPtr conjunction(ExprPtr a, ExprPtr b) {
  if (!a) return b;
  if (!b) return a;
  return binary(Op::And, std::move(a), std::move(b));
}

ExprPtr binary(Op op, ExprPtr left, ExprPtr right) {
  return make(Binary{op, std::move(left), std::move(right)});
}

ExprPtr rid(std::string table) {
  return make(Column{std::move(table), std::string(schema::kRowNumber), FieldType::Integer, true});
}

Value& Parameters::operator[](const std::string& name) {
  return values_[foldName(name)];
}

const Value& Parameters::at(const std::string& name) const {
  static const Value missing;
  const auto found = values_.find(foldName(name));
  return found == values_.end() ? missing : found->second;
}

}  // namespace tavoline::sql
