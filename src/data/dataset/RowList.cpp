#include "data/dataset/RowList.h"

#include <algorithm>
#include <limits>

namespace tavoline {

namespace {
constexpr std::size_t kFirstRows = 1024;  // listed at once
constexpr auto kAllRows = std::numeric_limits<std::size_t>::max();
constexpr RowId kLastOfAll = std::numeric_limits<RowId>::max();
}  // namespace

RowList::RowList(const TablePages& pages, const OwnWrites& own, const TablePages::Page& beginning)
    : pages_(pages), writes_(own) {
  pages_.order().byInsertion() ? listFirst(beginning) : listInOrder();
}

void RowList::listFirst(const TablePages::Page& beginning) {
  if (beginning.exhausted) {
    for (const TableRow& row : beginning.rows) rids_.push_back(row.rid);
    layChangesOver(kLastOfAll);
    return end();
  }
  std::size_t read = 0;
  RowId last = 0;
  const auto rows = pages_.numbers(TablePages::Listing::InOrder, kFirstRows);
  for (; rows->next(); ++read) {
    last = rows->value(0).toInteger();
    if (pages_.member(last)) rids_.push_back(last);
  }
  const bool all = read < kFirstRows;
  layChangesOver(all ? kLastOfAll : last);
  if (all) end();
}

/// The rest is asked for in no order, which leaves the engine free to read it from its narrowest index.
bool RowList::countOn(std::size_t rows) {
  if (whole_) return true;
  if (!stream_) stream_ = pages_.numbers(TablePages::Listing::AnyOrder);
  for (; rows > 0 && stream_->next(); --rows) {
    const RowId rid = stream_->value(0).toInteger();
    if (pages_.member(rid)) streamed_.push_back(rid);
  }
  if (rows > 0) {
    rids_ = std::exchange(streamed_, {});
    stream_.reset();
    layChangesOver(kLastOfAll);
    end();
  }
  return whole_;
}

/// Takes away the rows that were changed here, puts those that are still visible in their places up to
/// `last`, and leaves all in order.
void RowList::layChangesOver(RowId last) {
  std::erase_if(rids_, [this](RowId rid) { return writes_.changed(rid); });
  for (const TableRow* row : writes_.changedRows())
    if (row->rid <= last) rids_.push_back(row->rid);
  if (!std::ranges::is_sorted(rids_)) std::ranges::sort(rids_);
}

/// Changed rows stand at their places, which are known by key; keys are only read where there are such rows.
void RowList::listInOrder() {
  const std::vector<const TableRow*> changed = writes_.changedRows();
  auto next = changed.begin();
  const auto rows =
      pages_.numbers(changed.empty() ? TablePages::Listing::InOrder : TablePages::Listing::WithKeys);
  while (rows->next()) {
    const RowId rid = rows->value(0).toInteger();
    if (next != changed.end()) {
      RowKey key;
      for (std::size_t i = 0; i < pages_.order().columns(); ++i) key.push_back(rows->value(i + 1));
      key.emplace_back(rid);
      while (next != changed.end() && pages_.order().before((*next)->key, key))
        rids_.push_back((*next++)->rid);
    }
    if (pages_.member(rid) && !writes_.changed(rid)) rids_.push_back(rid);
  }
  for (; next != changed.end(); ++next) rids_.push_back((*next)->rid);
  end();
}

void RowList::end() {
  whole_ = true;
  for (auto row = writes_.firstFrom(0); row; row = writes_.firstFrom(*row + 1)) add(*row);
}

std::size_t RowList::count() {
  countOn(kAllRows);
  return rids_.size();
}

bool RowList::has(std::size_t record) {
  return record < counted() || record < count();
}

std::vector<RowId> RowList::stretch(std::size_t record, std::size_t size) const {
  const std::size_t from = record / size * size;
  const std::size_t to = std::min(from + size, rids_.size());
  return {rids_.begin() + static_cast<std::ptrdiff_t>(from), rids_.begin() + static_cast<std::ptrdiff_t>(to)};
}

RowList::Place RowList::find(RowId rid) const {
  const auto own = ownBegin();
  const auto found = pages_.order().byInsertion() ? std::lower_bound(rids_.begin(), own, rid)
                                                  : std::find(rids_.begin(), own, rid);
  if (found != own && *found == rid) return found;
  const auto inserted = std::lower_bound(own, rids_.end(), rid);
  return inserted != rids_.end() && *inserted == rid ? inserted : rids_.end();
}

std::optional<std::size_t> RowList::placeOf(RowId rid) {
  auto place = find(rid);
  if (place == rids_.end() && !whole_) {
    count();
    place = find(rid);
  }
  if (place == rids_.end()) return std::nullopt;
  return static_cast<std::size_t>(place - rids_.begin());
}

std::vector<RowId> RowList::page(const Reading& reading, std::size_t limit, bool& exhausted) const {
  auto first = rids_.begin(), last = ownBegin();
  if (reading.from) {
    const RowId rid = reading.from->back().toInteger();
    auto& bound = reading.backwards ? last : first;
    bound = reading.inclusive == reading.backwards ? std::upper_bound(first, last, rid)
                                                   : std::lower_bound(first, last, rid);
  }
  const auto size = static_cast<std::ptrdiff_t>(limit);
  exhausted = last - first <= size;
  if (!exhausted) (reading.backwards ? first : last) = reading.backwards ? last - size : first + size;
  return {first, last};
}

void RowList::add(RowId inserted) {
  if (!whole_) return;
  rids_.push_back(inserted);
  ++own_;
}

void RowList::remove(RowId rid) {
  const auto place = find(rid);
  if (place == rids_.end()) return;
  if (place >= ownBegin()) --own_;
  rids_.erase(place);
}

}  // namespace tavoline
