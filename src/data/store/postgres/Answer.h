#pragma once

#include <libpq-fe.h>

#include <cstdint>
#include <memory>
#include <string>

#include "data/value/Value.h"

namespace tavoline::postgres {

/// What the server answered to one statement: all its rows, in the engine's binary form.
class Answer {
 public:
  explicit Answer(PGresult* result = nullptr) : result_(result) {}

  int rows() const { return PQntuples(result_.get()); }
  bool isNull(int row, int column) const { return PQgetisnull(result_.get(), row, column) != 0; }
  /// As `type`; what the database holds instead, where it does not convert.
  Value value(int row, int column, FieldType type) const;
  std::string text(int row, int column) const { return {bytes(row, column), size(row, column)}; }
  std::int64_t integer(int row, int column) const {
    return value(row, column, FieldType::Integer).toInteger();
  }
  std::int64_t written() const;  ///< How many rows a write met.
  const PGresult* result() const { return result_.get(); }

 private:
  struct Clear {
    void operator()(PGresult* result) const { PQclear(result); }
  };
  const char* bytes(int row, int column) const { return PQgetvalue(result_.get(), row, column); }
  std::size_t size(int row, int column) const {
    return static_cast<std::size_t>(PQgetlength(result_.get(), row, column));
  }

  std::unique_ptr<PGresult, Clear> result_;
};

}  // namespace tavoline::postgres
