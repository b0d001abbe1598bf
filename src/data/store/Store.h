#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "data/schema/Catalog.h"
#include "data/sql/Ast.h"

namespace tavoline {

using RowId = std::int64_t;  ///< `rid`: hidden, never reused, in order of insertion.

/// The result of a query, streamed in order. Keeps its version for itself, whatever becomes of the snapshot.
class Rows {
 public:
  virtual ~Rows() = default;
  virtual bool next() = 0;                            ///< Steps to the next row, the first time to the first.
  virtual Value value(std::size_t column) const = 0;  ///< Typed as the statement's item; valid until next().
};

/// One version of the whole store, read lazily. What it shows cannot change. Shared by all who opened while
/// nothing was committed; gives its connection back when the last one lets go. One thread.
class Snapshot {
 public:
  virtual ~Snapshot() = default;
  /// Runs a resolved statement. Throws StoreError. The statement need only live for the call.
  virtual std::unique_ptr<Rows> query(const sql::Select& select,
                                      const sql::Parameters& parameters = {}) const = 0;
  /// True while nothing was committed since, by this process or, as far as the engine can tell, by another.
  virtual bool latest() const = 0;
  /// True if none of `tables` changed since this snapshot, as far as the store knows for sure.
  virtual bool unchanged(const std::vector<std::string>& tables) const = 0;
};

using FieldValues = std::vector<std::pair<std::string, Value>>;  ///< Column name and value.

/// The one store of a workstation. Every write is its own durable commit: when the call returns, it is on the
/// disk.
class Store {
 public:
  virtual ~Store() = default;

  /// Opens what the connection string names ("Data Source" in the working directory, its password checked
  /// against the store's own record). Says what a file is by its first bytes. Creates and alters nothing.
  /// Throws StoreError with a sentence for a missing, empty, foreign or wrongly protected file.
  static std::shared_ptr<Store> open(std::string_view connectionString);

  /// The tables as they are now: the same object until somebody changes their definition. Throws StoreError.
  virtual std::shared_ptr<const Catalog> catalog() const = 0;

  /// The newest version. Reads nothing; hands out the same snapshot until something is committed.
  virtual std::shared_ptr<const Snapshot> snapshot() = 0;

  /// Each throws StoreError and then leaves the store as it was: busy for longer than a few seconds, full
  /// disk, read-only, duplicate key, text too wide. `update` and `erase` throw if the row has gone.
  virtual RowId insert(const std::string& table, const FieldValues& fields) = 0;
  virtual void update(const std::string& table, RowId row, const FieldValues& fields) = 0;
  virtual void erase(const std::string& table, RowId row) = 0;
  virtual void execute(const sql::Update& resolved, const sql::Parameters& parameters) = 0;

  /// To be called when the user does nothing: folds the log. Never throws, never waits.
  virtual void idle() = 0;
};

}  // namespace tavoline
