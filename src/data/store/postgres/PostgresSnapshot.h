#pragma once

#include <memory>

#include "data/store/Store.h"
#include "data/store/postgres/Readers.h"

namespace tavoline::postgres {

class PostgresStore;

/// Keeps the store open for as long as it lives. Where its transaction was lost with the server, it goes on
/// in another one: in the same version if nothing was written since, else in the newest.
class PostgresSnapshot : public Snapshot {
 public:
  PostgresSnapshot(std::shared_ptr<const PostgresStore> store, std::shared_ptr<Pin> pin);

  std::unique_ptr<Rows> query(const sql::Select& select, const sql::Parameters& parameters) const override;
  std::optional<ValueRows> queryLittle(const sql::Select& select, const sql::Parameters& parameters,
                                       std::size_t rows) const override;
  bool latest() const override;
  std::int64_t changes(const std::string& table) const override;

  const WriteCounts& counts() const { return counts_; }  ///< They tell versions apart.
  /// Reads from another transaction on the same version from now on; streams under way stay on theirs.
  void moveTo(std::shared_ptr<Pin> pin) const { pin_ = std::move(pin); }

 private:
  std::vector<Answer> ask(const std::vector<Question>& questions) const;

  std::shared_ptr<const PostgresStore> store_;
  mutable std::shared_ptr<Pin> pin_;
  WriteCounts counts_;
};

}  // namespace tavoline::postgres
