#include "torture/Verdict.h"

#include <filesystem>
#include <map>

#include "data/schema/Schema.h"
#include "data/value/Errors.h"
#include "support/StoreFile.h"
#include "tools/store/Backup.h"

namespace tavoline::test {
namespace {

using sqlite::Connection;

std::map<std::string, std::string> contents(Connection& store) {
  std::map<std::string, std::string> found;
  for (const schema::Table& table : schema::tables()) {
    std::string lines = "SELECT rid";
    for (const schema::Column& column : table.columns)
      lines.append(" || ' ' || quote(\"").append(column.name).append("\")");
    lines.append(" AS line FROM \"").append(table.name).append("\" ORDER BY rid");
    found[std::string(table.name)] = store.text("SELECT group_concat(line, char(10)) FROM (" + lines + ")");
  }
  return found;
}

std::vector<std::string> differences(const std::string& store, Connection& copy) {
  Connection original(store, store, Connection::Role::Observer);
  const auto found = contents(original);
  std::vector<std::string> wrong;
  for (const auto& [table, rows] : contents(copy))
    if (found.at(table) != rows)
      wrong.emplace_back(table)
          .append(" should be:\n")
          .append(rows)
          .append("\nand is:\n")
          .append(found.at(table));
  return wrong;
}

}  // namespace

Witness::Witness(std::string store) : store_(std::move(store)), copy_(store_ + ".witness") {
  std::filesystem::remove(copy_);
  tool::backupStore(store_, copy_);
}

std::vector<std::string> Witness::verdict(const JournalReader& journal) {
  Connection copy = sideDoor(copy_);
  for (const std::string& write : journal.acknowledged) copy.execute(write);
  std::vector<std::string> wrong = differences(store_, copy);
  if (wrong.empty()) return wrong;
  for (const std::string& open : journal.uncertain) {
    copy.execute("BEGIN");
    try {
      copy.execute(open);
      if (differences(store_, copy).empty()) return copy.execute("COMMIT"), std::vector<std::string>();
    } catch (const StoreError&) {  // what could not be done is not what was done
    }
    copy.execute("ROLLBACK");
  }
  return wrong;
}

}  // namespace tavoline::test
