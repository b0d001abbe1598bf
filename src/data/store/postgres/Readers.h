#pragma once

#include <chrono>
#include <memory>
#include <string>
#include <utility>

#include "data/store/ReaderPool.h"
#include "data/store/postgres/CatalogReader.h"
#include "data/store/postgres/Connection.h"

namespace tavoline::postgres {

class Pin;

class Readers : public ReaderPool<Connection, Pin> {
 public:
  explicit Readers(std::shared_ptr<Server> server) : server_(std::move(server)) {}

 private:
  friend class Pin;
  std::unique_ptr<Connection> take();
  void giveBack(std::unique_ptr<Connection> connection) noexcept;

  std::shared_ptr<Server> server_;
};

/// A read-only transaction: the version that is newest when it is made, for as long as it lives and its
/// connection with it. That then goes back to the readers.
class Pin {
 public:
  using Moment = std::chrono::steady_clock::time_point;

  /// One round trip. Throws StoreError.
  explicit Pin(std::shared_ptr<Readers> readers);
  ~Pin();
  Pin(const Pin&) = delete;
  Pin& operator=(const Pin&) = delete;

  Connection& connection() const { return *connection_; }
  const WriteCounts& counts() const { return counts_; }  ///< Of this version.
  Moment since() const { return since_; }
  bool usable() const { return !connection_->failed(); }
  std::string newCursor() { return "c" + std::to_string(++cursors_); }

 private:
  void begin();

  std::shared_ptr<Readers> readers_;
  std::unique_ptr<Connection> connection_;
  WriteCounts counts_;
  Moment since_ = std::chrono::steady_clock::now();
  int cursors_ = 0;
};

}  // namespace tavoline::postgres
