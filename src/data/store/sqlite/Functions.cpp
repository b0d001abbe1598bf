#include "data/store/sqlite/Functions.h"

#include <string_view>

#include "data/value/Text.h"

namespace tavoline::sqlite {

namespace {

std::string_view textOf(sqlite3_value* value) {
  const auto* bytes = reinterpret_cast<const char*>(sqlite3_value_text(value));
  return bytes ? std::string_view(bytes, static_cast<std::size_t>(sqlite3_value_bytes(value)))
               : std::string_view();
}

void like(sqlite3_context* context, int /*count*/, sqlite3_value** arguments) {
  if (sqlite3_value_type(arguments[0]) == SQLITE_NULL || sqlite3_value_type(arguments[1]) == SQLITE_NULL)
    return;
  try {
    sqlite3_result_int(context, matchesLike(textOf(arguments[1]), textOf(arguments[0])));
  } catch (const std::exception&) {  // no exception may cross the engine
    sqlite3_result_error_nomem(context);
  }
}

void utf8(sqlite3_context* context, int /*count*/, sqlite3_value** arguments) {
  sqlite3_result_int(context, isUtf8(textOf(arguments[0])));
}

}  // namespace

void registerFunctions(sqlite3* connection) {
  sqlite3_create_function_v2(connection, "tavoline_utf8", 1,
                             SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS, nullptr, utf8, nullptr,
                             nullptr, nullptr);
  sqlite3_create_function_v2(connection, "tavoline_like", 2,
                             SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS, nullptr, like, nullptr,
                             nullptr, nullptr);
}

}  // namespace tavoline::sqlite
