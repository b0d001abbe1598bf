#pragma once

#include <memory>
#include <string>
#include <vector>

#include "data/store/sqlite/Connection.h"

namespace tavoline::sqlite {

/// Reading connections that rest between two snapshots, with their prepared statements.
class Readers {
 public:
  Readers(std::string path, std::string name) : path_(std::move(path)), name_(std::move(name)) {}

  std::unique_ptr<Connection> take();
  void giveBack(std::unique_ptr<Connection> connection) noexcept;

 private:
  std::string path_, name_;
  std::vector<std::unique_ptr<Connection>> resting_;
};

/// A read transaction: the version that is newest when it is made, for as long as it lives. Its connection
/// then goes back to the readers.
class Pin {
 public:
  explicit Pin(std::shared_ptr<Readers> readers);
  ~Pin();
  Pin(const Pin&) = delete;
  Pin& operator=(const Pin&) = delete;

  Connection& connection() const { return *connection_; }

 private:
  std::shared_ptr<Readers> readers_;
  std::unique_ptr<Connection> connection_;
};

}  // namespace tavoline::sqlite
