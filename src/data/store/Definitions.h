#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "data/store/Engine.h"

namespace tavoline {

/// The tables: `rid` first, then the declared columns with their defaults and, for the texts, their widths as
/// constraints named `largeur_TABLE_COLUMN_WIDTH`. Last comes the store's record of itself.
std::vector<Definition> tableDefinitions(const Engine& engine);
/// One column as it stands in the definition of its table.
std::string columnDefinition(const Engine& engine, const schema::Table& table, const schema::Column& column);
/// What stands beside the tables and is made once they are filled, which is quicker so: the keys
/// (`cle_TABLE`, unique; rows without a key are allowed), the other indexes, and last the count of the rows
/// written to each table with what keeps it (`ecriture_TABLE_insert`, `_update`, `_delete`). A store that
/// lacks some of it still works; an upgrade adds what is missing.
std::vector<Definition> auxiliaryDefinitions(const Engine& engine);
/// The rows of the record: version and password.
std::vector<std::string> recordStatements(const Engine& engine, std::string_view password);

}  // namespace tavoline
