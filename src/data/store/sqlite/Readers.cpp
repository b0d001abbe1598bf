#include "data/store/sqlite/Readers.h"

namespace tavoline::sqlite {

namespace {

// A tap reads two or three versions, one after another.
constexpr std::size_t keptReaders = 4;

}  // namespace

std::unique_ptr<Connection> Readers::take() {
  if (resting_.empty()) return std::make_unique<Connection>(path_, name_, Connection::Role::Reader);
  // The one that came last has its pages and statements warm.
  std::unique_ptr<Connection> connection = std::move(resting_.back());
  resting_.pop_back();
  return connection;
}

void Readers::giveBack(std::unique_ptr<Connection> connection) noexcept {
  if (connections() < keptReaders) resting_.push_back(std::move(connection));
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
