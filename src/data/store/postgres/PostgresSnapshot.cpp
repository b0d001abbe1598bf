#include "data/store/postgres/PostgresSnapshot.h"

#include "data/sql/Types.h"
#include "data/sql/Writer.h"
#include "data/store/postgres/Engine.h"
#include "data/store/postgres/PostgresRows.h"
#include "data/store/postgres/PostgresStore.h"
#include "data/value/Errors.h"

namespace tavoline::postgres {

namespace {

constexpr std::int64_t firstRows = 200;
constexpr std::int64_t wholeRows = 2000;  // are taken in one answer where the statement stops there

bool givesOneRow(const sql::Select& select) {
  if (!select.groupBy.empty()) return false;
  for (const sql::Item& item : select.items)
    if (sql::containsAggregate(item.expr)) return true;
  return false;
}

}  // namespace

PostgresSnapshot::PostgresSnapshot(std::shared_ptr<const PostgresStore> store, std::shared_ptr<Pin> pin)
    : store_(std::move(store)), pin_(std::move(pin)), counts_(pin_->counts()) {}

std::vector<Answer> PostgresSnapshot::ask(const std::vector<Question>& questions) const {
  try {
    if (pin_->usable()) return pin_->connection().ask(questions);
  } catch (const LostConnection&) {
    // Reading again is no harm.
  }
  pin_ = store_->newPin();
  return pin_->connection().ask(questions);
}

std::unique_ptr<Rows> PostgresSnapshot::query(const sql::Select& select,
                                              const sql::Parameters& parameters) const {
  sql::Written written = sql::write(select, parameters, engine());
  const bool whole = givesOneRow(select) || (select.limit && *select.limit <= wholeRows);
  std::string text = written.text;
  if (!whole && !select.limit) text += " limit " + std::to_string(firstRows);
  if (whole || !select.limit) {
    Answer first = std::move(ask({{std::move(text), written.values}}).front());
    const bool all = whole || first.rows() < firstRows;
    return std::make_unique<PostgresRows>(pin_, std::move(first), std::move(written), sql::typesOf(select),
                                          all);
  }
  return std::make_unique<PostgresRows>(pin_, Answer(), std::move(written), sql::typesOf(select), false);
}

// A statement that turns out to be more than a little work is stopped, and the transaction goes on as before
// it.
std::optional<ValueRows> PostgresSnapshot::queryLittle(const sql::Select& select,
                                                       const sql::Parameters& parameters,
                                                       std::size_t rows) const {
  sql::Select few = select;
  if (!few.limit && !givesOneRow(select)) few.limit = static_cast<std::int64_t>(rows) + 1;
  const sql::Written written = sql::write(few, parameters, engine());
  if (!pin_->usable()) pin_ = store_->newPin();
  Connection& connection = pin_->connection();
  std::vector<Answer> answers;
  try {
    answers = connection.ask({{"SAVEPOINT peu"},
                              {"SET LOCAL statement_timeout = 8"},
                              {written.text, written.values},
                              {"ROLLBACK TO SAVEPOINT peu"},
                              {"RELEASE SAVEPOINT peu"}});
  } catch (const LostConnection&) {
    throw;
  } catch (const StoreError&) {
    connection.execute("ROLLBACK TO SAVEPOINT peu; RELEASE SAVEPOINT peu");
    return std::nullopt;
  }
  const Answer& answer = answers[2];
  if (answer.rows() > static_cast<int>(rows)) return std::nullopt;
  const std::vector<FieldType> types = sql::typesOf(select);
  ValueRows found(static_cast<std::size_t>(answer.rows()));
  for (int row = 0; row < answer.rows(); ++row)
    for (std::size_t i = 0; i < types.size(); ++i)
      found[static_cast<std::size_t>(row)].push_back(answer.value(row, static_cast<int>(i), types[i]));
  return found;
}

bool PostgresSnapshot::latest() const {
  try {
    return store_->counts() == counts_;
  } catch (const StoreError&) {
    return false;  // whoever then asks for a newer one is told why there is none
  }
}

std::int64_t PostgresSnapshot::changes(const std::string& table) const {
  return countOf(counts_, table);
}

}  // namespace tavoline::postgres
