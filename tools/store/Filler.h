#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string_view>
#include <vector>

#include "data/value/Value.h"

namespace tavoline::tool {

/// Adds rows to one table, many of them quickly.
class Inserter {
 public:
  using Adding = std::function<void(std::span<const Value>)>;
  explicit Inserter(Adding add) : add_(std::move(add)) {}

  /// A row with these values, in the order of the columns that were asked for; a view of nothing, as
  /// std::string_view(), gives null. Throws StoreError.
  template <typename... Values>
  void run(const Values&... values) {
    const Value row[] = {value(values)...};
    add_(row);
  }

  /// The same with its values in one row.
  void add(std::span<const Value> row) { add_(row); }

 private:
  template <typename T>
  static Value value(const T& given) {
    if constexpr (std::is_same_v<T, std::string_view>)
      return given.data() ? Value(given) : Value();
    else
      return given;
  }

  Adding add_;
};

/// The type of a column of a table of the schema, or of its row number.
FieldType typeOfColumn(std::string_view table, std::string_view column);

/// What fills the tables of a store in the making, whatever its engine.
class Filler {
 public:
  virtual ~Filler() = default;
  virtual Inserter inserter(std::string_view table, const std::vector<std::string_view>& columns) = 0;

  /// Rows that come without a number, here and later, are numbered behind `last`.
  virtual void numberBehind(std::string_view table, std::int64_t last) = 0;

  using Reading = std::function<void(std::span<const Value>)>;
  /// Reads back what the store holds of a table, in order of insertion: a row with the values of `columns`
  /// (the hidden row number may be among them), each of its column's type, to `read`. Throws StoreError.
  virtual void readBack(std::string_view table, const std::vector<std::string_view>& columns,
                        const Reading& read) = 0;
};

}  // namespace tavoline::tool
