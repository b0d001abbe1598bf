#pragma once

#include <memory>

#include "data/store/Store.h"
#include "data/store/sqlite/Readers.h"

namespace tavoline::sqlite {

class SqliteStore;

/// Where the store stood: the number of commits by this process, and the engine's count of those by others.
struct Version {
  std::uint64_t own = 0;
  std::int64_t foreign = 0;

  friend bool operator==(const Version&, const Version&) = default;
};

/// Keeps the store open for as long as it lives.
class SqliteSnapshot : public Snapshot {
 public:
  SqliteSnapshot(std::shared_ptr<const SqliteStore> store, Version version, std::shared_ptr<Pin> pin);

  std::unique_ptr<Rows> query(const sql::Select& select, const sql::Parameters& parameters) const override;
  bool latest() const override;
  bool unchanged(const std::vector<std::string>& tables) const override;

  const Version& version() const { return version_; }
  /// Reads from another transaction on the same version from now on; streams under way stay on theirs.
  void moveTo(std::shared_ptr<Pin> pin) { pin_ = std::move(pin); }

 private:
  std::shared_ptr<const SqliteStore> store_;
  Version version_;
  std::shared_ptr<Pin> pin_;
};

}  // namespace tavoline::sqlite
