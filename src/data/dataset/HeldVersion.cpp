#include "data/dataset/HeldVersion.h"

namespace tavoline {

const Snapshot* HeldVersion::operator->() const {
  if (!snapshot_) {
    snapshot_ = store_->snapshot();
    written_ = 0;
  }
  return snapshot_.get();
}

void HeldVersion::moveTo(std::shared_ptr<const Snapshot> version) {
  snapshot_ = std::move(version);
  written_ = 0;
}

bool HeldVersion::changedByOthers(const Snapshot& newer, const std::vector<std::string>& tables) const {
  std::int64_t writes = 0;
  for (const std::string& table : tables) writes += newer.changes(table) - snapshot_->changes(table);
  return writes != written_;
}

}  // namespace tavoline
