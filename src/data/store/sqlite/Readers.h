#pragma once

#include <chrono>
#include <memory>
#include <string>
#include <utility>

#include "data/store/ReaderPool.h"
#include "data/store/sqlite/Connection.h"

namespace tavoline::sqlite {

class Pin;

class Readers : public ReaderPool<Connection, Pin> {
 public:
  Readers(std::string path, std::string name) : path_(std::move(path)), name_(std::move(name)) {}

 private:
  friend class Pin;
  std::unique_ptr<Connection> take();

  std::string path_, name_;
};

/// A read transaction: the version that is newest when it is made, for as long as it lives. Its connection
/// then goes back to the readers.
class Pin {
 public:
  using Moment = std::chrono::system_clock::time_point;

  /// `since` when this version is held already.
  explicit Pin(std::shared_ptr<Readers> readers, Moment since = std::chrono::system_clock::now());
  ~Pin();
  Pin(const Pin&) = delete;
  Pin& operator=(const Pin&) = delete;

  Connection& connection() const { return *connection_; }
  Moment since() const { return since_; }

 private:
  std::shared_ptr<Readers> readers_;
  std::unique_ptr<Connection> connection_;
  Moment since_;
};

}  // namespace tavoline::sqlite
