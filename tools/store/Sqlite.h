#pragma once

#include <sqlite3.h>

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace tavoline::tool {

class Statement;

/// A connection of the tool to an SQLite file. Everything throws StoreError with a French sentence.
class Database {
 public:
  /// Observe changes nothing, neither the file nor what stands beside it, and lets everybody else write.
  enum class Mode { Create, Observe };
  Database(const std::string& path, Mode mode);

  void execute(const std::string& sql) const;
  Statement prepare(std::string_view sql) const;
  /// An insertion of `columns` into `table`, to be run with their values in this order.
  Statement inserter(std::string_view table, const std::vector<std::string_view>& columns) const;
  std::int64_t integer(std::string_view sql) const;  ///< First column of the first row; 0 if there is none.
  std::string text(std::string_view sql) const;      ///< The same as text; empty if there is none.
  void close();                                      ///< Throws if the engine could not finish its work.

  sqlite3* handle() const { return handle_.get(); }

 private:
  struct Closer {
    void operator()(sqlite3* handle) const { sqlite3_close_v2(handle); }
  };
  std::unique_ptr<sqlite3, Closer> handle_;
};

/// A prepared statement, for many runs. Must not outlive its database.
class Statement {
 public:
  /// Binds the arguments from the first parameter on and runs to the end, ready for the next run.
  template <typename... Arguments>
  void run(const Arguments&... arguments) {
    int place = 0;
    (bind(++place, arguments), ...);
    while (step()) {
    }
  }

  void bind(int place, std::nullptr_t);
  void bind(int place, std::int64_t value);
  void bind(int place, int value) { bind(place, static_cast<std::int64_t>(value)); }
  void bind(int place, double value);
  void bind(int place,
            std::string_view value);  ///< Copied; a view of nothing, as std::string_view(), gives null.
  void bind(int place, const std::string& value) { bind(place, std::string_view(value)); }
  void bind(int place, const char* value) { bind(place, std::string_view(value)); }
  void bind(int place, const std::vector<std::uint8_t>& bytes);  ///< Copied; no bytes at all give null.

  /// Steps to the next row, the first time to the first; after the last one the statement is ready to run
  /// again.
  bool step();
  std::int64_t integer(int column) const { return sqlite3_column_int64(handle_.get(), column); }
  double real(int column) const { return sqlite3_column_double(handle_.get(), column); }
  std::string text(int column) const;
  bool isNull(int column) const { return sqlite3_column_type(handle_.get(), column) == SQLITE_NULL; }

 private:
  friend class Database;
  struct Finalizer {
    void operator()(sqlite3_stmt* handle) const { sqlite3_finalize(handle); }
  };
  explicit Statement(sqlite3_stmt* handle) : handle_(handle) {}
  void verify(int code) const;
  std::unique_ptr<sqlite3_stmt, Finalizer> handle_;
};

/// Throws StoreError with the sentence for the engine's result `code`.
[[noreturn]] void raiseError(sqlite3* handle, int code);

}  // namespace tavoline::tool
