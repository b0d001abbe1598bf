#pragma once

#include <vector>

#include "data/schema/Catalog.h"
#include "data/schema/Schema.h"
#include "data/store/Definitions.h"
#include "data/store/postgres/Connection.h"
#include "tools/store/RowRules.h"

/// What is looked at in the database of a server, beneath the rules that hold for the rows of every engine.
namespace tavoline::tool {

Ask askOf(postgres::Connection& connection);  ///< Must not outlive the connection.

/// Tables and columns that are missing; the rules of the rows name them. None of it can be added.
Findings checkTables(const Catalog& found);
/// Places, kinds, widths and defaults of those that are there. Of these only a width can be given more room.
Findings checkColumns(const Catalog& found);
/// A text that is held to less than today, as a version before this one made it.
struct NarrowColumn {
  const schema::Table& table;
  const schema::Column& column;
  int width;  ///< That it has.
};
std::vector<NarrowColumn> narrowColumns(const Catalog& found);
void widen(postgres::Connection& connection, const NarrowColumn& narrow);
/// What stands beside the tables in today's definition and not, or not so, in the database.
std::vector<Definition> missingDefinitions(postgres::Connection& connection);
/// Makes it as it is today, in place of what bears its name.
void renew(postgres::Connection& connection, const Definition& one);

}  // namespace tavoline::tool
