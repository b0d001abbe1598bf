#include "data/store/postgres/Readers.h"

namespace tavoline::postgres {

// Gives nothing where none rests that is alive.
std::unique_ptr<Connection> Readers::take() {
  auto connection = takeResting();
  while (connection && !connection->alive()) connection = takeResting();
  return connection;
}

void Readers::giveBack(std::unique_ptr<Connection> connection) noexcept {
  if (!connection->failed()) ReaderPool::giveBack(std::move(connection));
}

Pin::Pin(std::shared_ptr<Readers> readers) : readers_(std::move(readers)), connection_(readers_->take()) {
  try {
    if (connection_) begin();
  } catch (const LostConnection&) {
    connection_.reset();  // it had gone without a word; nothing was asked of it that cannot be asked again
  }
  if (!connection_) {
    connection_ = std::make_unique<Connection>(readers_->server_);
    begin();
  }
  readers_->pins_.insert(this);
}

// The transaction takes its version with the counts, which are of it.
void Pin::begin() {
  const auto answers =
      connection_->ask({{"BEGIN ISOLATION LEVEL REPEATABLE READ READ ONLY"}, countsQuestion()});
  counts_ = countsIn(answers.back());
}

Pin::~Pin() {
  readers_->pins_.erase(this);
  connection_->tell("ROLLBACK");
  readers_->giveBack(std::move(connection_));
}

}  // namespace tavoline::postgres
