#include "data/store/sqlite/Readers.h"

namespace tavoline::sqlite {

std::unique_ptr<Connection> Readers::take() {
  if (auto rested = takeResting()) return rested;
  return std::make_unique<Connection>(path_, name_, Connection::Role::Reader);
}

Pin::Pin(std::shared_ptr<Readers> readers, Moment since)
    : readers_(std::move(readers)), connection_(readers_->take()), since_(since) {
  connection_->run("BEGIN");
  // A transaction takes its version at its first reading, which therefore must not wait for a question.
  connection_->run("SELECT 1 FROM sqlite_schema LIMIT 1");
  readers_->pins_.insert(this);
}

Pin::~Pin() {
  readers_->pins_.erase(this);
  connection_->endReading();
  readers_->giveBack(std::move(connection_));
}

}  // namespace tavoline::sqlite
