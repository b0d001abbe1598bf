#include "data/store/sqlite/SqliteSnapshot.h"

#include "data/sql/Types.h"
#include "data/sql/Writer.h"
#include "data/store/sqlite/CatalogReader.h"
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

// Stops a statement that turns out to be more than a little work.
class LittleWork {
 public:
  explicit LittleWork(const Connection& connection) : handle_(connection.handle()) {
    constexpr int stepsBetweenQuestions = 1000;
    sqlite3_progress_handler(handle_, stepsBetweenQuestions, spend, this);
  }
  ~LittleWork() { sqlite3_progress_handler(handle_, 0, nullptr, nullptr); }
  LittleWork(const LittleWork&) = delete;
  LittleWork& operator=(const LittleWork&) = delete;

  bool spent() const { return left_ < 0; }

 private:
  static int spend(void* self) { return --static_cast<LittleWork*>(self)->left_ < 0; }

  sqlite3* handle_;
  int left_ = 20;
};

}  // namespace

SqliteSnapshot::SqliteSnapshot(std::shared_ptr<const SqliteStore> store, Version version,
                               std::shared_ptr<Pin> pin)
    : store_(std::move(store)), version_(version), pin_(std::move(pin)) {
  if (!store_->keepsCounts()) counts_ = store_->countsSeen(version_);
}

std::unique_ptr<Rows> SqliteSnapshot::query(const sql::Select& select,
                                            const sql::Parameters& parameters) const {
  const sql::Written written = sql::write(select, parameters, engine());
  Statement statement = pin_->connection().prepare(written.text);
  statement.bind(written.values);
  return std::make_unique<SqliteRows>(pin_, std::move(statement), sql::typesOf(select));
}

std::optional<ValueRows> SqliteSnapshot::queryLittle(const sql::Select& select,
                                                     const sql::Parameters& parameters,
                                                     std::size_t rows) const {
  const LittleWork work(pin_->connection());
  try {
    ValueRows found;
    for (const auto stream = query(select, parameters); stream->next();) {
      if (found.size() == rows) return std::nullopt;
      auto& row = found.emplace_back();
      for (std::size_t i = 0; i < select.items.size(); ++i) row.push_back(stream->value(i));
    }
    return found;
  } catch (const StoreError&) {
    if (work.spent()) return std::nullopt;
    throw;
  }
}

bool SqliteSnapshot::latest() const {
  try {
    return store_->version() == version_;
  } catch (const StoreError&) {
    return false;  // whoever then asks for a newer one is told why there is none
  }
}

std::int64_t SqliteSnapshot::changes(const std::string& table) const {
  if (!counts_) counts_ = readCounts(pin_->connection());
  return countOf(*counts_, table);
}

}  // namespace tavoline::sqlite
