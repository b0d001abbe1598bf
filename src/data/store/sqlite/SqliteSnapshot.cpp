#include "data/store/sqlite/SqliteSnapshot.h"

#include "data/sql/Writer.h"
#include "data/store/sqlite/Engine.h"
#include "data/store/sqlite/SqliteStore.h"
#include "data/value/Errors.h"

namespace tavoline::sqlite {

namespace {

// Holds its transaction by itself, so that letting go of the snapshot does not pull the version from under
// it.
class SqliteRows : public Rows {
 public:
  SqliteRows(std::shared_ptr<Pin> pin, Statement statement, std::vector<FieldType> types)
      : pin_(std::move(pin)), statement_(std::move(statement)), types_(std::move(types)) {}

  // The engine would begin anew after the end.
  bool next() override { return !ended_ && !(ended_ = !statement_.step()); }
  Value value(std::size_t column) const override {
    return statement_.value(static_cast<int>(column), types_.at(column));
  }

 private:
  std::shared_ptr<Pin> pin_;
  Statement statement_;  // goes back before the transaction ends
  std::vector<FieldType> types_;
  bool ended_ = false;
};

}  // namespace

SqliteSnapshot::SqliteSnapshot(std::shared_ptr<const SqliteStore> store, Version version,
                               std::shared_ptr<Pin> pin)
    : store_(std::move(store)), version_(version), pin_(std::move(pin)) {}

std::unique_ptr<Rows> SqliteSnapshot::query(const sql::Select& select,
                                            const sql::Parameters& parameters) const {
  const sql::Written written = sql::write(select, parameters, engine());
  Statement statement = pin_->connection().prepare(written.text);
  statement.bind(written.values);
  std::vector<FieldType> types;
  types.reserve(select.items.size());
  for (const sql::Item& item : select.items) types.push_back(item.type);
  return std::make_unique<SqliteRows>(pin_, std::move(statement), std::move(types));
}

bool SqliteSnapshot::latest() const {
  try {
    return store_->version() == version_;
  } catch (const StoreError&) {
    return false;  // whoever then asks for a newer one is told why there is none
  }
}

bool SqliteSnapshot::unchanged(const std::vector<std::string>& tables) const {
  try {
    return store_->unchangedSince(version_, tables);
  } catch (const StoreError&) {
    return false;
  }
}

}  // namespace tavoline::sqlite
