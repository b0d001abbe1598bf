#pragma once

#include <memory>

#include "data/store/Store.h"
#include "data/store/WriteCounts.h"
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
  std::optional<ValueRows> queryLittle(const sql::Select& select, const sql::Parameters& parameters,
                                       std::size_t rows) const override;
  bool latest() const override;
  std::int64_t changes(const std::string& table) const override;

  const Version& version() const { return version_; }
  Pin::Moment since() const { return pin_->since(); }
  /// Reads from another transaction on the same version from now on; streams under way stay on theirs.
  void moveTo(std::shared_ptr<Pin> pin) { pin_ = std::move(pin); }

 private:
  std::shared_ptr<const SqliteStore> store_;
  Version version_;
  std::shared_ptr<Pin> pin_;
  mutable std::optional<WriteCounts> counts_;  // read when first asked for, where the store keeps them
};

}  // namespace tavoline::sqlite
