#include "data/dataset/TableRow.h"

namespace tavoline {

namespace {
sql::ExprPtr literal(const Value& value) {
  return sql::make(sql::Literal{value});
}
}  // namespace

RowOrder::RowOrder(const sql::Select& select) : rid_(sql::rid(select.from->table)) {
  for (const sql::Order& order : select.orderBy) {
    const auto* column = std::get_if<sql::Column>(&order.expr->node);
    for (std::size_t i = 0; column && i < select.items.size(); ++i)
      if (select.items[i].name == column->name) terms_.push_back({i, select.items[i], order.descending});
  }
}

RowKey RowOrder::keyOf(const std::vector<Value>& row, RowId rid) const {
  RowKey key;
  key.reserve(terms_.size() + 1);
  for (const Term& term : terms_) key.push_back(row[term.column]);
  key.emplace_back(rid);
  return key;
}

bool RowOrder::before(const RowKey& a, const RowKey& b) const {
  for (std::size_t i = 0; i < a.size(); ++i) {
    if (a[i] == b[i]) continue;
    const bool descending = i < terms_.size() && terms_[i].descending;
    return descending ? b[i] < a[i] : a[i] < b[i];
  }
  return false;
}

bool RowOrder::comes(const RowKey& key, const Reading& reading) const {
  if (!reading.from) return true;
  if (reading.backwards ? before(*reading.from, key) : before(key, *reading.from)) return false;
  return reading.inclusive || (reading.backwards ? before(key, *reading.from) : before(*reading.from, key));
}

sql::ExprPtr RowOrder::condition(const Reading& reading) const {
  return reading.from ? beyond(reading, 0) : nullptr;
}

/// The leading term stands alone as well, so that an index on it is used as a range.
sql::ExprPtr RowOrder::beyond(const Reading& reading, std::size_t part) const {
  const bool lastPart = part == terms_.size();
  const sql::ExprPtr column = lastPart ? rid_ : terms_[part].item.expr;
  const bool descending = !lastPart && terms_[part].descending;
  const bool upwards = descending == reading.backwards;
  const Value& value = (*reading.from)[part];
  if (lastPart) {
    if (upwards)
      return sql::binary(reading.inclusive ? sql::Op::GreaterEqual : sql::Op::Greater, column,
                         literal(value));
    return sql::binary(reading.inclusive ? sql::Op::LessEqual : sql::Op::Less, column, literal(value));
  }
  const sql::ExprPtr rest = beyond(reading, part + 1);
  if (value.isNull()) {  // null sorts before everything
    const sql::ExprPtr same = sql::conjunction(sql::make(sql::IsNull{column, false}), rest);
    return upwards ? sql::binary(sql::Op::Or, sql::make(sql::IsNull{column, true}), same) : same;
  }
  const sql::ExprPtr strict = sql::binary(upwards ? sql::Op::Greater : sql::Op::Less, column, literal(value));
  const sql::ExprPtr same = sql::conjunction(sql::binary(sql::Op::Equal, column, literal(value)), rest);
  sql::ExprPtr either = sql::binary(sql::Op::Or, strict, same);
  if (!upwards) return sql::binary(sql::Op::Or, sql::make(sql::IsNull{column, false}), either);
  return sql::conjunction(sql::binary(sql::Op::GreaterEqual, column, literal(value)), either);
}

std::vector<sql::Order> RowOrder::orderBy(bool backwards) const {
  std::vector<sql::Order> order;
  order.reserve(terms_.size() + 1);
  for (const Term& term : terms_) order.push_back({term.item.expr, term.descending != backwards});
  order.push_back({rid_, backwards});
  return order;
}

std::vector<sql::Item> RowOrder::items() const {
  std::vector<sql::Item> items;
  items.reserve(terms_.size());
  for (const Term& term : terms_) items.push_back(term.item);
  return items;
}

}  // namespace tavoline
