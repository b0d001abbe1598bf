#include "data/store/postgres/CatalogReader.h"

#include "data/schema/Identity.h"
#include "data/store/Defaults.h"
#include "data/value/Text.h"

namespace tavoline::postgres {

namespace {

FieldType typeNamed(const std::string& name) {
  if (name == "int8" || name == "int4" || name == "int2") return FieldType::Integer;
  if (name == "float8" || name == "float4" || name == "numeric") return FieldType::Float;
  if (name == "timestamp" || name == "timestamptz" || name == "date") return FieldType::DateTime;
  return name == "bytea" ? FieldType::Blob : FieldType::Text;
}

// `0`, or `'x'::text`.
std::string withoutCast(const std::string& text) {
  return text.substr(0, text.rfind("::"));
}

}  // namespace

Question countsQuestion() {
  return {"SELECT nom, nombre FROM tavoline_ecritures"};
}

WriteCounts countsIn(const Answer& answer) {
  WriteCounts counts;
  for (int row = 0; row < answer.rows(); ++row)
    counts[foldName(answer.text(row, 0))] = answer.integer(row, 1);
  return counts;
}

Catalog readCatalog(Connection& connection) {
  // The width of a text stands in the name of the rule that keeps it.
  const Answer columns = connection.ask(Question{
      "SELECT c.relname::text, a.attname::text, t.typname::text, pg_get_expr(d.adbin, d.adrelid), (SELECT "
      "max(substring(r.conname from '_([0-9]+)$')::int) FROM pg_constraint r WHERE r.conrelid = c.oid AND "
      "r.conname ~ ('^largeur_' || c.relname || '_' || a.attname || '_[0-9]+$')) FROM pg_class c JOIN "
      "pg_attribute a ON a.attrelid = c.oid JOIN pg_type t ON t.oid = a.atttypid LEFT JOIN pg_attrdef d ON "
      "d.adrelid = c.oid AND d.adnum = a.attnum WHERE c.relnamespace = 'public'::regnamespace AND c.relkind "
      "= 'r' AND a.attnum > 0 AND NOT a.attisdropped AND c.relname NOT IN ($1, $2) AND a.attname <> $3 ORDER "
      "BY c.oid, a.attnum",
      {std::string(schema::kRecordTable), std::string(schema::kCountTable),
       std::string(schema::kRowNumber)}});
  std::vector<TableInfo> tables;
  for (int row = 0; row < columns.rows(); ++row) {
    const std::string table = columns.text(row, 0);
    if (tables.empty() || tables.back().name != table) tables.push_back({table, {}});
    const FieldType type = typeNamed(columns.text(row, 2));
    tables.back().columns.push_back({columns.text(row, 1), type,
                                     columns.isNull(row, 4) ? 0 : static_cast<int>(columns.integer(row, 4)),
                                     constantDefault(withoutCast(columns.text(row, 3)), type)});
  }
  return Catalog(std::move(tables));
}

}  // namespace tavoline::postgres
