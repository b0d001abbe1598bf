#include "torture/Verdict.h"

#include <algorithm>
#include <filesystem>

#include "data/schema/Identity.h"
#include "data/schema/Schema.h"
#include "data/sql/Parser.h"
#include "data/sql/Resolver.h"
#include "data/value/Errors.h"
#include "support/StoreFile.h"
#include "tools/store/Backup.h"
#include "tools/store/Copy.h"
#include "tools/store/server/ServerCreation.h"

namespace tavoline::test {
namespace {

using sqlite::Connection;

Contents contents(Connection& store) {
  Contents found;
  for (const schema::Table& table : schema::tables()) {
    std::string names = "rid";
    for (const schema::Column& column : table.columns) names.append(", \"").append(column.name) += '"';
    std::string& lines = found[std::string(table.name)];
    for (sqlite::Statement rows =
             store.prepare("SELECT " + names + " FROM \"" + std::string(table.name) + "\" ORDER BY rid");
         rows.step(); lines += '\n') {
      lines += rows.text(0);
      int at = 0;
      for (const schema::Column& column : table.columns)
        lines.append(" ").append(literal(rows.value(++at, column.type)));
    }
  }
  return found;
}

Contents contents(const std::string& path) {
  const auto store = Store::open("Data Source=" + path +
                                 ";Jet OLEDB:Database Password=" + std::string(schema::kStorePassword));
  const auto version = store->snapshot();
  Contents found;
  for (const schema::Table& table : schema::tables()) {
    const std::string name(table.name);
    sql::Select all = sql::resolve(std::get<sql::Select>(sql::parseStatement("select * from [" + name + ']')),
                                   *store->catalog());
    std::erase_if(all.items, [](const sql::Item& item) { return item.name == schema::kRowNumber; });
    all.items.insert(all.items.begin(),
                     {sql::rid(name), std::string(schema::kRowNumber), FieldType::Integer});
    std::string& lines = found[name];
    for (const auto rows = version->query(all); rows->next(); lines += '\n') {
      lines += rows->value(0).text();
      for (std::size_t i = 1; i <= table.columns.size(); ++i)
        lines.append(" ").append(literal(rows->value(i)));
    }
  }
  return found;
}

std::vector<std::string> differences(const Contents& found, const Contents& wanted) {
  std::vector<std::string> wrong;
  for (const auto& [table, rows] : wanted)
    if (found.at(table) != rows)
      wrong.push_back(std::string(table)
                          .append(" should be:\n")
                          .append(rows)
                          .append("\nand is:\n")
                          .append(found.at(table)));
  return wrong;
}

// Which row an insert made, if it was done: the last one of its table.
std::string lastRow(const Contents& found, const std::string& insert) {
  if (!insert.starts_with("INSERT INTO \"")) return {};
  const auto name = insert.find('"') + 1;
  const std::string& rows = found.at(insert.substr(name, insert.find('"', name) - name));
  const auto line = rows.size() < 2 ? rows.npos : rows.rfind('\n', rows.size() - 2);
  return rows.empty() ? "1" : std::to_string(std::stoll(rows.substr(line == rows.npos ? 0 : line + 1)));
}

}  // namespace

Witness::Witness(std::string store) : store_(std::move(store)), copy_(store_ + ".witness") {
  std::filesystem::remove(copy_);
  tool::serverAddress(store_) ? void(tool::copyAcross(store_, copy_)) : tool::backupStore(store_, copy_);
}

std::vector<std::string> Witness::verdict(const JournalReader& journal) {
  Connection copy = sideDoor(copy_);
  for (const std::string& write : journal.acknowledged) copy.execute(write);
  const Contents found = contents(store_);
  std::vector<std::string> wrong = differences(found, contents(copy));
  if (wrong.empty()) return wrong;
  for (const std::string& open : journal.uncertain) {
    copy.execute("BEGIN");
    try {
      copy.execute(withRow(open, lastRow(found, open)));
      if (differences(found, contents(copy)).empty())
        return copy.execute("COMMIT"), std::vector<std::string>();
    } catch (const StoreError&) {  // what could not be done is not what was done
    }
    copy.execute("ROLLBACK");
  }
  return wrong;
}

}  // namespace tavoline::test
