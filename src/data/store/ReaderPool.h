#pragma once

#include <memory>
#include <set>
#include <utility>
#include <vector>

namespace tavoline {

/// Versions of a store that one workstation may hold before it asks for them back: the newest, and those that
/// a gesture under way has still to read.
inline constexpr std::size_t kHeldVersions = 3;

/// The reading connections of an engine: one for each of its read transactions, the pins, and those that rest
/// between two of them with their prepared statements.
template <class Connection, class Pin>
class ReaderPool {
 public:
  const std::set<const Pin*>& pins() const { return pins_; }  ///< The read transactions under way.
  std::size_t connections() const { return pins_.size() + resting_.size(); }

 protected:
  /// The one that came last, which has its pages and statements warm; nothing where none rests.
  std::unique_ptr<Connection> takeResting() {
    if (resting_.empty()) return nullptr;
    std::unique_ptr<Connection> connection = std::move(resting_.back());
    resting_.pop_back();
    return connection;
  }
  /// Keeps as many as are ever in use at once: a further version is taken before the others are let go.
  void giveBack(std::unique_ptr<Connection> connection) noexcept {
    if (connections() <= kHeldVersions) resting_.push_back(std::move(connection));
  }

  std::set<const Pin*> pins_;

 private:
  std::vector<std::unique_ptr<Connection>> resting_;
};

}  // namespace tavoline
