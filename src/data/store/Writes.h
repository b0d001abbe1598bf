#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "data/schema/Catalog.h"
#include "data/sql/Writer.h"
#include "data/store/Store.h"

/// The writes of a store in the words of an engine: column names as the table spells them, values as its
/// columns hold them.
namespace tavoline {

/// Throws StoreError if the table is missing.
const TableInfo& tableNamed(const Catalog& catalog, std::string_view name);

/// Each throws StoreError for a column that the table does not have, ConversionError for a value that its
/// column cannot hold.
sql::Written insertion(const TableInfo& table, const FieldValues& fields, const sql::Dialect& dialect);
sql::Written change(const TableInfo& table, RowId row, const FieldValues& fields,
                    const sql::Dialect& dialect);
sql::Written removal(const TableInfo& table, RowId row, const sql::Dialect& dialect);

/// An insertion of `columns`, spelt as the table spells them, with a placeholder for each.
std::string insertionText(std::string_view table, const std::vector<std::string_view>& columns,
                          const sql::Dialect& dialect);

/// Throw StoreError: the row that was to be changed, or erased, has gone.
[[noreturn]] void refuseChangeOfGone(const TableInfo& table);
[[noreturn]] void refuseRemovalOfGone(const TableInfo& table);

}  // namespace tavoline
