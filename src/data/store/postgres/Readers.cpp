#include "data/store/postgres/Readers.h"

namespace tavoline::postgres {

namespace {

// A tap reads two or three versions, one after another.
constexpr std::size_t keptConnections = 3;

}  // namespace

// Gives nothing where none rests that is alive.
std::unique_ptr<Connection> Readers::take() {
  while (!resting_.empty()) {
    // The one that came last has its statements warm.
    std::unique_ptr<Connection> connection = std::move(resting_.back());
    resting_.pop_back();
    if (connection->alive()) return connection;
  }
  return nullptr;
}

void Readers::giveBack(std::unique_ptr<Connection> connection) noexcept {
  if (connections() < keptConnections && !connection->failed()) resting_.push_back(std::move(connection));
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
