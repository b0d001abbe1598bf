#include "tools/store/Copy.h"

#include <span>

#include "data/schema/Identity.h"
#include "data/schema/Schema.h"
#include "data/sql/Parser.h"
#include "data/sql/Resolver.h"
#include "data/value/Errors.h"
#include "tools/store/Creation.h"
#include "tools/store/exchange/Cells.h"
#include "tools/store/exchange/Origin.h"
#include "tools/store/exchange/Progress.h"

namespace tavoline::tool {
namespace {

std::vector<std::string_view> columnsOf(const schema::Table& table) {
  std::vector<std::string_view> columns = {schema::kRowNumber};
  for (const schema::Column& column : table.columns) columns.push_back(column.name);
  return columns;
}

sql::Select rowsOf(const schema::Table& table, const Catalog& catalog) {
  sql::Select all = sql::resolve(
      std::get<sql::Select>(sql::parseStatement("select * from [" + std::string(table.name) + ']')), catalog);
  std::vector<sql::Item> items = {
      {sql::rid(std::string(table.name)), std::string(schema::kRowNumber), FieldType::Integer}};
  for (const schema::Column& column : table.columns)
    for (const sql::Item& item : all.items)
      if (item.name == column.name) items.push_back(item);
  if (items.size() != table.columns.size() + 1)
    throw StoreError("La table « " + std::string(table.name) +
                     " » n'a pas toutes ses colonnes. Examinez les données par « tavoline-store check ».");
  all.items = std::move(items);
  all.updatable = false;
  return all;
}

std::int64_t copyTable(const schema::Table& table, Rows& rows, Filler& filler, Progress& progress) {
  const auto columns = columnsOf(table);
  std::int64_t count = 0;
  RowDigest sent, kept;
  Inserter insert = filler.inserter(table.name, columns);
  std::vector<Value> row(columns.size());
  for (; rows.next(); ++count) {
    for (std::size_t i = 0; i < row.size(); ++i) row[i] = rows.value(i);
    sent.add(row);
    insert.add(row);
    progress.step();
  }
  filler.readBack(table.name, columns, [&](std::span<const Value> read) { kept.add(read); });
  if (sent.text() != kept.text())
    throw StoreError("La table « " + std::string(table.name) +
                     " » ne se relit pas telle qu'elle a été lue : rien n'a été copié. Examinez les données "
                     "de départ par « tavoline-store check ».");
  return count;
}

}  // namespace

CopyReport copyAcross(const std::string& from, const std::string& to) {
  const Origin origin = openOrigin(from);
  const auto moment = origin.store->snapshot();
  const auto catalog = origin.store->catalog();
  CopyReport report;
  createStore(to, origin.password, [&](Filler& filler) {
    Progress progress;
    std::int64_t expected = 0;
    for (const auto& [table, last] : origin.given) expected += last;
    progress.expect(expected);
    for (const schema::Table& table : schema::tables()) {
      progress.at(std::string(table.name));
      report.rows += copyTable(table, *moment->query(rowsOf(table, *catalog)), filler, progress);
      if (const auto last = origin.given.find(table.name); last != origin.given.end())
        filler.numberBehind(table.name, last->second);
      ++report.tables;
    }
  });
  return report;
}

}  // namespace tavoline::tool
