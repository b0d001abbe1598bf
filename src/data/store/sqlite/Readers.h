#pragma once

#include <chrono>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "data/store/sqlite/Connection.h"

namespace tavoline::sqlite {

class Pin;

/// Reading connections that rest between two snapshots, with their prepared statements.
class Readers {
 public:
  Readers(std::string path, std::string name) : path_(std::move(path)), name_(std::move(name)) {}

  const std::set<const Pin*>& pins() const { return pins_; }  ///< The read transactions under way.
  std::size_t connections() const { return pins_.size() + resting_.size(); }

 private:
  friend class Pin;
  std::unique_ptr<Connection> take();
  void giveBack(std::unique_ptr<Connection> connection) noexcept;

  std::string path_, name_;
  std::vector<std::unique_ptr<Connection>> resting_;
  std::set<const Pin*> pins_;
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
