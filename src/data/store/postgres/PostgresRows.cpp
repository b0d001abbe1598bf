#include "data/store/postgres/PostgresRows.h"

#include <utility>

#include "data/value/Errors.h"

namespace tavoline::postgres {

namespace {

constexpr int rowsAtOnce = 4096;

}  // namespace

PostgresRows::PostgresRows(std::shared_ptr<Pin> pin, Answer first, sql::Written statement,
                           std::vector<FieldType> types, bool whole)
    : pin_(std::move(pin)),
      batch_(std::move(first)),
      statement_(std::move(statement)),
      types_(std::move(types)),
      whole_(whole) {}

PostgresRows::~PostgresRows() {
  if (!cursor_.empty() && pin_->usable()) pin_->connection().tell("CLOSE " + cursor_);
}

bool PostgresRows::next() {
  if (at_ + 1 >= batch_.rows()) {
    if (whole_) {
      at_ = batch_.rows();  // an ended stream does not begin again
      return false;
    }
    fetchMore();
    at_ = -1;
    if (batch_.rows() == 0) return next();
  }
  ++at_;
  return true;
}

// The order of a statement is always told, so the cursor passes over the very rows that were read.
void PostgresRows::fetchMore() {
  if (!pin_->usable())
    throw StoreError("La lecture a été interrompue, parce que la connexion au serveur des données " +
                     pin_->connection().address().place + " a été coupée. Recommencez.");
  std::vector<Question> questions;
  if (cursor_.empty()) {
    cursor_ = pin_->newCursor();
    questions.push_back(
        {"DECLARE " + cursor_ + " NO SCROLL CURSOR FOR " + statement_.text, std::move(statement_.values)});
    if (batch_.rows() > 0)
      questions.push_back({"MOVE FORWARD " + std::to_string(batch_.rows()) + " IN " + cursor_});
  }
  questions.push_back({"FETCH FORWARD " + std::to_string(rowsAtOnce) + " FROM " + cursor_});
  batch_ = std::move(pin_->connection().ask(questions).back());
  whole_ = batch_.rows() < rowsAtOnce;
}

}  // namespace tavoline::postgres
