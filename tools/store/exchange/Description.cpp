#include "tools/store/exchange/Description.h"

#include <filesystem>
#include <fstream>
#include <sstream>

#include "data/store/sqlite/Connection.h"
#include "data/value/Errors.h"
#include "data/value/Text.h"

namespace tavoline::tool {
namespace {

constexpr int kFormat = 1;

// Names of tables, columns, files and digests: no letter in them needs an escape.
std::string member(std::string_view name, const std::string& value) {
  return '"' + std::string(name) + "\": \"" + value + '"';
}
std::string member(std::string_view name, std::int64_t value) {
  return '"' + std::string(name) + "\": " + std::to_string(value);
}

std::string columnsOf(const Description::Table& table) {
  std::string text;
  for (const Description::Column& column : table.columns)
    text += (text.empty() ? "" : ",") + std::string("\n        {") + member("name", column.name) + ", " +
            member("type", column.type) + '}';
  return text;
}

std::string contentOf(const std::string& folder, const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file)
    throw StoreError("Le dossier « " + folder + " » n'est pas un export : il y manque « " +
                     std::string(kDescriptionFile) + " ».");
  std::ostringstream content;
  content << file.rdbuf();
  return content.str();
}

Description readJson(const std::string& text, const std::string& path) {
  // The engine of the stores reads JSON too.
  sqlite::Connection reader(":memory:", path, sqlite::Connection::Role::Maker);
  const auto ask = [&](const std::string& query, std::initializer_list<Value> values) {
    sqlite::Statement rows = reader.prepare(query);
    rows.bind(values);
    return rows;
  };
  sqlite::Statement head = ask("SELECT json_extract(?1, '$.format'), json_extract(?1, '$.pictures')", {text});
  if (!head.step() || head.integer(0) > kFormat)
    throw StoreError("« " + path +
                     " » est d'une version plus récente. Mettez cet outil à jour, puis recommencez.");
  Description found;
  found.pictures = head.integer(1);
  sqlite::Statement tables = ask(
      "SELECT value ->> 'name', value ->> 'file', value ->> 'rows', value ->> 'sha256', value -> 'columns' "
      "FROM json_each(?1, '$.tables')",
      {text});
  while (tables.step()) {
    Description::Table& table = found.tables.emplace_back(
        Description::Table{tables.text(0), tables.text(1), tables.integer(2), tables.text(3), {}});
    sqlite::Statement columns =
        ask("SELECT value ->> 'name', value ->> 'type' FROM json_each(?1)", {tables.text(4)});
    while (columns.step()) table.columns.push_back({columns.text(0), columns.text(1)});
  }
  return found;
}

}  // namespace

std::string Description::json() const {
  std::string text = "{\n  " + member("format", kFormat) + ",\n  " + member("written", written.stored()) +
                     ",\n  " + member("pictures", pictures) + ",\n  \"tables\": [";
  for (const Table& table : tables)
    text += (&table == tables.data() ? "" : ",") + std::string("\n    {") + member("name", table.name) +
            ", " + member("file", table.file) + ", " + member("rows", table.rows) + ",\n      " +
            member("sha256", table.digest) + ",\n      \"columns\": [" + columnsOf(table) + "]}";
  return text + "]\n}\n";
}

Description Description::of(const std::string& folder) {
  const std::string path = std::filesystem::path(folder) / kDescriptionFile;
  const std::string text = contentOf(folder, path);
  try {
    return readJson(text, path);
  } catch (const StoreError& error) {
    if (error.detail().empty()) throw;
    throw StoreError("« " + path + " » est illisible. Refaites l'export.", error.detail());
  }
}

const Description::Table* Description::find(std::string_view table) const {
  for (const Table& one : tables)
    if (sameName(one.name, table)) return &one;
  return nullptr;
}

}  // namespace tavoline::tool
