#include "torture/Verdict.h"

#include <map>
#include <optional>
#include <set>

#include "tools/store/Schema.h"
#include "tools/store/Sqlite.h"

namespace tavoline::test {
namespace {

using tool::Database;
using Fields = std::map<std::string, std::string>;
using Place = std::pair<std::string, RowId>;

std::string quoted(const std::string& name) {
  return '"' + name + '"';
}

/// What is known of the rows that the run wrote; nothing for one that it deleted.
using Known = std::map<Place, std::optional<Fields>>;

void apply(Known& known, const Write& write) {
  std::optional<Fields>& row = known[{write.table, write.row}];
  if (write.kind == Write::Kind::Erase) return row.reset();
  if (!row) row.emplace();
  for (const auto& [column, value] : write.fields) (*row)[column] = value;
}

bool stands(const Database& store, const Place& place, const std::optional<Fields>& fields) {
  std::string condition = "rid = " + std::to_string(place.second);
  if (fields)
    for (const auto& [column, value] : *fields) condition += " AND " + quoted(column) + " IS " + value;
  const long long rows = store.integer("SELECT count(*) FROM " + quoted(place.first) + " WHERE " + condition);
  return rows == (fields ? 1 : 0);
}

std::string nameOf(const Place& place) {
  return place.first + " row " + std::to_string(place.second);
}

/// Whether the write that nobody acknowledged was done; it may have been, but then whole.
bool done(const Database& store, const Write& write, const Known& known, const Counts& before,
          std::vector<std::string>& wrong) {
  Known after = known;
  if (write.kind != Write::Kind::Insert) {
    apply(after, write);
    const Place place{write.table, write.row};
    if (stands(store, place, after.at(place))) return true;
    const auto earlier = known.find(place);
    if (earlier != known.end() && !stands(store, place, earlier->second))
      wrong.push_back(nameOf(place) + " is neither as before the last write nor as after it");
    return false;
  }
  RowId highest = 0;
  for (const Counts::Table& table : before.tables)
    if (table.name == write.table) highest = table.highest;
  for (const auto& [place, fields] : known)
    if (place.first == write.table) highest = std::max(highest, place.second);
  const RowId added = store.integer("SELECT max(rid) FROM " + quoted(write.table));
  if (added <= highest) return false;
  const Place place{write.table, added};
  if (!stands(store, place, Fields(write.fields.begin(), write.fields.end())))
    wrong.push_back(nameOf(place) + " was inserted by half");
  return true;
}

}  // namespace

Counts Counts::of(const std::string& path) {
  const Database store(path, Database::Mode::Observe);
  Counts counts;
  for (const schema::Table& table : schema::tables()) {
    const std::string from = " FROM " + quoted(std::string(table.name));
    counts.tables.push_back({std::string(table.name), store.integer("SELECT count(*)" + from),
                             store.integer("SELECT max(rid)" + from)});
  }
  return counts;
}

namespace {

/// The verdict if `open` is the write that may or may not have been done.
std::vector<std::string> judge(const std::string& path, const Counts& before,
                               const std::vector<Write>& acknowledged, const std::optional<Write>& open) {
  std::vector<std::string> wrong;
  const Database store(path, Database::Mode::Observe);
  Known known;
  std::map<std::string, long long> grown;
  const auto count = [&grown](const Write& write) {
    if (write.kind == Write::Kind::Insert) ++grown[write.table];
    if (write.kind == Write::Kind::Erase) --grown[write.table];
  };
  for (const Write& write : acknowledged) {
    apply(known, write);
    count(write);
  }
  std::optional<Place> openPlace;
  if (open) {
    openPlace = {open->table, open->row};
    if (done(store, *open, known, before, wrong)) count(*open);
  }
  for (const auto& [place, fields] : known)
    if (place != openPlace && !stands(store, place, fields))
      wrong.push_back(nameOf(place) + " lost an acknowledged write");
  const Counts after = Counts::of(path);
  for (std::size_t i = 0; i < after.tables.size(); ++i)
    if (after.tables[i].rows != before.tables[i].rows + grown[after.tables[i].name])
      wrong.push_back(after.tables[i].name + " has " + std::to_string(after.tables[i].rows) + " rows");
  return wrong;
}

}  // namespace

std::vector<std::string> verdict(const std::string& path, const Counts& before,
                                 const JournalReader& journal) {
  if (journal.uncertain.empty()) return judge(path, before, journal.acknowledged, {});
  std::vector<std::string> wrong;
  for (const Write& open : journal.uncertain) {
    wrong = judge(path, before, journal.acknowledged, open);
    if (wrong.empty()) break;
  }
  return wrong;
}

}  // namespace tavoline::test
