#pragma once

#include <memory>
#include <vector>

#include "data/sql/Writer.h"
#include "data/store/Store.h"
#include "data/store/postgres/Readers.h"

namespace tavoline::postgres {

/// Rows of a statement in the order of it: the first ones in one answer, the others by a cursor in larger
/// and larger ones. Holds its transaction by itself.
class PostgresRows : public Rows {
 public:
  /// `first` answers the statement; unless it is the `whole` result, cut to its first rows.
  PostgresRows(std::shared_ptr<Pin> pin, Answer first, sql::Written statement, std::vector<FieldType> types,
               bool whole);
  ~PostgresRows() override;
  PostgresRows(const PostgresRows&) = delete;
  PostgresRows& operator=(const PostgresRows&) = delete;

  bool next() override;
  Value value(std::size_t column) const override {
    return batch_.value(at_, static_cast<int>(column), types_.at(column));
  }

 private:
  void fetchMore();

  std::shared_ptr<Pin> pin_;
  Answer batch_;
  sql::Written statement_;
  std::vector<FieldType> types_;
  std::string cursor_;  // empty until one is needed
  int at_ = -1;
  bool whole_;
};

}  // namespace tavoline::postgres
