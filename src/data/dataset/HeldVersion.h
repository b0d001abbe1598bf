#pragma once

#include <memory>
#include <string>
#include <vector>

#include "data/store/Store.h"

namespace tavoline {

/// The version of the store that a cursor reads: held since Open or Refresh, or let go of and taken anew with
/// the next question, as the newest one then.
class HeldVersion {
 public:
  explicit HeldVersion(Store& store) : store_(&store), snapshot_(store.snapshot()) {}

  const Snapshot* operator->() const;  ///< Throws StoreError if it had been let go of and there is none.
  bool held() const { return snapshot_ != nullptr; }
  bool is(const std::shared_ptr<const Snapshot>& other) const { return snapshot_ == other; }
  void moveTo(std::shared_ptr<const Snapshot> version);
  void letGo() { snapshot_.reset(); }

  void wrote() { ++written_; }  ///< The cursor itself, one row of its one table.
  std::int64_t written() const { return written_; }
  /// Whether anybody but the cursor itself has written to `tables` between this version and `newer`.
  bool changedByOthers(const Snapshot& newer, const std::vector<std::string>& tables) const;

 private:
  Store* store_;
  mutable std::shared_ptr<const Snapshot> snapshot_;
  mutable std::int64_t written_ = 0;  // since this version
};

}  // namespace tavoline
