#pragma once

#include <memory>
#include <optional>
#include <string>

#include "data/sql/Writer.h"
#include "data/store/Relieving.h"
#include "data/store/Store.h"
#include "data/store/postgres/PostgresSnapshot.h"
#include "data/store/postgres/Readers.h"

namespace tavoline::postgres {

/// The store in a database of a server: one writing connection, and a reading one for each version that
/// somebody holds. A connection that has gone is made anew with the next question. Before a further version
/// is taken, those who hold versions are asked to let go.
class PostgresStore : public Store, public std::enable_shared_from_this<PostgresStore> {
 public:
  PostgresStore(std::shared_ptr<Server> server, std::unique_ptr<Connection> writer);

  std::shared_ptr<const Catalog> catalog() const override;
  std::shared_ptr<const Snapshot> snapshot() override;

  RowId insert(const std::string& table, const FieldValues& fields) override;
  void update(const std::string& table, RowId row, const FieldValues& fields) override;
  void erase(const std::string& table, RowId row) override;
  void execute(const sql::Update& resolved, const sql::Parameters& parameters) override;
  void relieveBy(std::weak_ptr<const Reliever> reliever) override { relieving_.by(std::move(reliever)); }
  std::string advice() const override;  ///< Where the clocks of the two differ.
  std::size_t announce(const std::string& occupation) override;
  void idle() override;
  void pause() override;

  std::shared_ptr<Pin> newPin() const { return std::make_shared<Pin>(readers_); }  ///< Throws StoreError.
  WriteCounts counts() const;  ///< As they are now. Throws StoreError.
  std::size_t connections() const { return 1 + readers_->connections(); }

 protected:
  void shareVersion(bool begins) override;

 private:
  Connection& writer() const;
  Answer write(const TableInfo& table, const sql::Written& written);
  const TableInfo& tableNamed(const std::string& name) const;
  std::shared_ptr<const Snapshot> newest();
  std::shared_ptr<Pin> pinOrRelief();
  void renew();

  std::shared_ptr<Server> server_;
  mutable std::unique_ptr<Connection> writer_;
  std::shared_ptr<Readers> readers_;
  mutable std::shared_ptr<const Catalog> catalog_;
  std::weak_ptr<PostgresSnapshot> current_;
  int sharing_ = 0;                         // how many OneVersion live
  std::shared_ptr<const Snapshot> shared_;  // that all of them take
  Relieving relieving_;
  std::optional<std::int64_t> announced_;  // the key of what this workstation is at
};

}  // namespace tavoline::postgres
