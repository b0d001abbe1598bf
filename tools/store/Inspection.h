#pragma once

#include <vector>

#include "data/store/Definitions.h"
#include "data/store/Location.h"
#include "data/store/sqlite/Connection.h"
#include "tools/store/RowRules.h"

/// What is looked at in an SQLite file, beneath the rules that hold for the rows of every engine.
namespace tavoline::tool {

Ask askOf(sqlite::Connection& connection);  ///< Must not outlive the connection.

/// The engine's own check of its pages and indexes.
Findings checkPages(sqlite::Connection& connection);
/// The header, the log, the record of version and password.
Findings checkRecord(sqlite::Connection& connection, const Location& file);
/// Tables, and columns in their places; the rules of the rows name them. None of it can be added.
Findings checkTables(sqlite::Connection& connection);
/// Widths, defaults, and row numbers that are never given twice. Of these only a width can be given more
/// room.
Findings checkColumns(sqlite::Connection& connection);
/// Everything is stored as its type says, and no text is wider than its column: the engine holds nobody to
/// it.
Findings checkValues(sqlite::Connection& connection);
/// What stands beside the tables in today's definition and not, or not so, in the store.
std::vector<Definition> missingDefinitions(sqlite::Connection& connection);
/// A table of which texts are held to less than today, as a version before this one made it.
struct NarrowTable {
  std::string name;
  std::vector<std::string> columns;
  std::string widened;  ///< The text that makes it with all their room, and otherwise as it is.
};
std::vector<NarrowTable> narrowTables(sqlite::Connection& connection);
/// How the engine calls this kind of thing: "table", "index".
std::string kindOf(const Definition& definition);

}  // namespace tavoline::tool
