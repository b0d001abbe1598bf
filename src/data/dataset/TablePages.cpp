#include "data/dataset/TablePages.h"

#include <algorithm>

#include "data/sql/Resolver.h"

namespace tavoline {

namespace {
struct NoRows : Rows {
  bool next() override { return false; }
  Value value(std::size_t) const override { return {}; }
};

class RowRead : public Rows {
 public:
  explicit RowRead(const std::vector<Value>& values) : values_(values) {}
  bool next() override { return false; }
  Value value(std::size_t column) const override { return values_.at(column); }

 private:
  const std::vector<Value>& values_;
};

sql::Item ridItem(const std::string& table) {
  return {sql::rid(table), "rid", FieldType::Integer};
}
}  // namespace

TablePages::TablePages(CursorSource source)
    : source_(std::move(source)),
      tables_{source_.select.from->table},
      order_(source_.select),
      narrowed_(source_.select) {
  for (std::size_t i = 0; i < columns().size(); ++i)
    if (columns()[i].type != FieldType::Blob) readColumns_.push_back(i);
}

std::unique_ptr<Rows> TablePages::ask(const sql::Select& select) const {
  if (exhausted_) return std::make_unique<NoRows>();
  return source_.snapshot->query(select, source_.parameters);
}

void TablePages::filter(const sql::ExprPtr& filter) {
  narrowed_ = sql::narrowed(source_.select, filter);
  filter_ = filter;
}

/// The statement under the filter, as far as it can hold rows that belong to it.
sql::Select TablePages::reading() const {
  sql::Select select = narrowed_;
  select.updatable = false;
  select.items = {ridItem(table())};
  select.orderBy.clear();
  if (ceiling_) {
    const RowId last = joined_.empty() ? *ceiling_ : joined_.back();
    select.where = sql::conjunction(
        narrowed_.where, sql::binary(sql::Op::LessEqual, sql::rid(table()), sql::make(sql::Literal{last})));
  }
  return select;
}

bool TablePages::member(RowId rid) const {
  if (!ceiling_) return true;
  if (rid > *ceiling_) return std::binary_search(joined_.begin(), joined_.end(), rid);
  return !members_ || std::binary_search(members_->begin(), members_->end(), rid);
}

TableRow TablePages::rowOf(const Rows& rows) const {
  TableRow row;
  row.rid = rows.value(0).toInteger();
  row.values.resize(columns().size());
  row.unread.assign(row.values.size(), true);
  for (std::size_t i = 0; i < readColumns_.size(); ++i) {
    row.values[readColumns_[i]] = rows.value(i + 1);
    row.unread[readColumns_[i]] = false;
  }
  row.key = order_.keyOf(row.values, row.rid);
  return row;
}

TablePages::Page TablePages::read(const Reading& reading, std::size_t limit,
                                  const sql::ExprPtr& extra) const {
  sql::Select select = this->reading();
  for (const std::size_t column : readColumns_) select.items.push_back(columns()[column]);
  select.where = sql::conjunction(sql::conjunction(select.where, order_.condition(reading)), extra);
  select.orderBy = order_.orderBy(reading.backwards);
  select.limit = static_cast<std::int64_t>(limit);
  Page page;
  std::size_t seen = 0;
  for (const auto rows = ask(select); rows->next(); ++seen) {
    TableRow row = rowOf(*rows);
    page.end = row.key;
    if (member(row.rid)) page.rows.push_back(std::move(row));
  }
  page.exhausted = seen < limit;
  return page;
}

std::vector<TableRow> TablePages::find(const std::vector<RowId>& rids) const {
  std::vector<TableRow> found;
  if (rids.empty()) return found;
  sql::Select select = source_.select;
  select.updatable = false;
  select.items = {ridItem(table())};
  for (const std::size_t column : readColumns_) select.items.push_back(columns()[column]);
  // Any row that was a member once stays one: the statement's own condition is not asked again.
  sql::In in{sql::rid(table()), {}, false};
  for (const RowId rid : rids) in.values.emplace_back(rid);
  select.where = sql::make(std::move(in));
  select.orderBy.clear();
  const auto rows = ask(select);
  while (rows->next()) found.push_back(rowOf(*rows));
  return found;
}

const Value& TablePages::fetched(TableRow& row, std::size_t column) const {
  if (row.unread.empty() || !row.unread[column]) return row.values[column];
  sql::Select select = source_.select;
  select.items = {columns()[column]};
  select.updatable = false;
  select.where = sql::binary(sql::Op::Equal, sql::rid(table()), sql::make(sql::Literal{Value(row.rid)}));
  select.orderBy.clear();
  const auto rows = source_.snapshot->query(select);
  if (rows->next()) row.values[column] = rows->value(0);
  row.unread[column] = false;
  return row.values[column];
}

std::unique_ptr<Rows> TablePages::numbers(Listing listing, std::optional<std::size_t> limit) const {
  sql::Select select = reading();
  if (listing != Listing::AnyOrder) select.orderBy = order_.orderBy(false);
  if (listing == Listing::WithKeys)
    for (sql::Item& item : order_.items()) select.items.push_back(std::move(item));
  if (limit) select.limit = static_cast<std::int64_t>(*limit);
  return ask(select);
}

void TablePages::settleMembers() {
  if (ceiling_) return;
  sql::Select held = source_.select;
  held.updatable = false;
  held.items = {ridItem(table())};
  held.orderBy.clear();
  std::optional<std::vector<RowId>> members;
  RowId highest = 0;
  if (held.where) {
    members.emplace();
    for (const auto rows = source_.snapshot->query(held, source_.parameters); rows->next();)
      members->push_back(rows->value(0).toInteger());
    std::ranges::sort(*members);
    if (!members->empty()) highest = members->back();
  } else {
    held.items.front().expr = sql::make(sql::Call{sql::Aggregate::Max, sql::rid(table())});
    const auto rows = source_.snapshot->query(held);
    if (rows->next() && !rows->value(0).isNull()) highest = rows->value(0).toInteger();
  }
  sql::Select unconditioned = source_.select;
  unconditioned.where = nullptr;
  narrowed_ = sql::narrowed(unconditioned, filter_);
  source_.select = std::move(unconditioned);
  members_ = std::move(members);
  ceiling_ = highest;
}

void TablePages::moveOn(std::shared_ptr<const Snapshot> newer, const std::vector<RowId>& joining) {
  settleMembers();
  joined_.insert(joined_.end(), joining.begin(), joining.end());
  exhausted_ = false;
  source_.snapshot.moveTo(std::move(newer));
}

std::optional<std::vector<TableRow>> TablePages::readAllIfFew() const {
  sql::Select all = source_.select;
  all.updatable = false;
  all.items = {ridItem(table())};
  for (const std::size_t column : readColumns_) all.items.push_back(columns()[column]);
  all.orderBy.clear();
  if (members_ && members_->size() + joined_.size() > keptRows) return std::nullopt;
  if (members_) {
    sql::In in{sql::rid(table()), {}, false};
    for (const auto* rids : {&*members_, &joined_})
      for (const RowId rid : *rids) in.values.emplace_back(rid);
    all.where = sql::make(std::move(in));
  } else if (ceiling_) {
    const RowId last = joined_.empty() ? *ceiling_ : joined_.back();
    all.where = sql::binary(sql::Op::LessEqual, sql::rid(table()), sql::make(sql::Literal{last}));
  }
  const auto found = source_.snapshot->queryLittle(all, source_.parameters, keptRows);
  if (!found) return std::nullopt;
  std::vector<TableRow> rows;
  for (const auto& values : *found)
    if (TableRow row = rowOf(RowRead(values)); member(row.rid)) rows.push_back(std::move(row));
  return rows;
}

TableRow TablePages::gone(RowId rid) const {
  TableRow row;
  row.rid = rid;
  row.gone = true;
  row.values.resize(columns().size());
  row.key = order_.keyOf(row.values, rid);
  return row;
}

}  // namespace tavoline
