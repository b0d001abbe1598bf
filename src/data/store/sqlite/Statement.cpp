#include "data/store/sqlite/Statement.h"

#include <memory>

#include "data/store/sqlite/Connection.h"

namespace tavoline::sqlite {

Statement::~Statement() {
  if (!node_.empty()) owner_->giveBack(std::move(node_));
}

void Statement::bind(std::span<const Value> values) {
  sqlite3_reset(handle());
  int number = 0;
  for (const Value& value : values) bind(++number, value);
}

void Statement::bind(int number, const Value& value) {
  sqlite3_stmt* const statement = handle();
  int code = SQLITE_OK;
  if (value.isNull()) {
    code = sqlite3_bind_null(statement, number);
  } else if (value.isInteger()) {
    code = sqlite3_bind_int64(statement, number, value.toInteger());
  } else if (value.isFloat()) {
    code = sqlite3_bind_double(statement, number, value.toFloat());
  } else if (value.isBytes()) {
    const SharedBytes bytes = value.toBytes();
    // The engine takes a null pointer for null, and bytes that are merely empty have one.
    code = bytes->empty()
               ? sqlite3_bind_zeroblob(statement, number, 0)
               : sqlite3_bind_blob64(statement, number, bytes->data(), bytes->size(), SQLITE_TRANSIENT);
  } else {
    const std::string text = value.isDateTime() ? value.toDateTime().stored() : value.text();
    code = sqlite3_bind_text64(statement, number, text.data(), text.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
  }
  if (code != SQLITE_OK) owner_->fail(code);
}

bool Statement::step() {
  const int code = sqlite3_step(handle());
  if (code == SQLITE_ROW) return true;
  if (code == SQLITE_DONE) return false;
  owner_->fail(code);
}

std::string Statement::text(int column) const {
  const auto* bytes = sqlite3_column_text(handle(), column);
  if (!bytes) return {};
  const auto size = static_cast<std::size_t>(sqlite3_column_bytes(handle(), column));
  return {reinterpret_cast<const char*>(bytes), size};
}

Value Statement::value(int column, FieldType type) const {
  sqlite3_stmt* const statement = handle();
  switch (sqlite3_column_type(statement, column)) {
    case SQLITE_NULL:
      return {};
    case SQLITE_INTEGER:
      if (type == FieldType::Float) return sqlite3_column_double(statement, column);
      if (type == FieldType::Text) return text(column);
      return integer(column);
    case SQLITE_FLOAT:
      if (type == FieldType::Text) return text(column);
      return sqlite3_column_double(statement, column);
    case SQLITE_BLOB:
      break;
    default: {
      if (type == FieldType::Blob) break;
      std::string stored = text(column);
      if (type == FieldType::DateTime)
        if (const auto date = DateTime::fromStored(stored)) return *date;
      return stored;
    }
  }
  const auto* bytes = static_cast<const std::uint8_t*>(sqlite3_column_blob(statement, column));
  const auto size = static_cast<std::size_t>(sqlite3_column_bytes(statement, column));
  return SharedBytes(std::make_shared<const Bytes>(bytes, bytes + size));
}

}  // namespace tavoline::sqlite
