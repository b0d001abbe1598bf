#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
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

using ValueRows = std::vector<std::vector<Value>>;

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
  /// The whole result where it has at most `rows` rows and takes the engine little work (well under a
  /// millisecond); nothing otherwise. Throws StoreError.
  virtual std::optional<ValueRows> queryLittle(const sql::Select& select, const sql::Parameters& parameters,
                                               std::size_t rows) const = 0;
  /// How many rows of `table` were inserted, updated and deleted up to this version, by whomever: equal
  /// counts mean equal rows, and what one knows to have written is the difference. Throws StoreError.
  virtual std::int64_t changes(const std::string& table) const = 0;
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

  /// As long as one lives, all who take a version take the same, until this workstation writes: for steps
  /// between which nothing else happens. Spares a server a question for each.
  class OneVersion {
   public:
    explicit OneVersion(Store& store) : store_(store) { store_.shareVersion(true); }
    ~OneVersion() { store_.shareVersion(false); }
    OneVersion(const OneVersion&) = delete;
    OneVersion& operator=(const OneVersion&) = delete;

   private:
    Store& store_;
  };

  /// Each throws StoreError and then leaves the store as it was: busy for longer than a few seconds, full
  /// disk, read-only, duplicate key, text too wide. `update` and `erase` throw if the row has gone.
  virtual RowId insert(const std::string& table, const FieldValues& fields) = 0;
  virtual void update(const std::string& table, RowId row, const FieldValues& fields) = 0;
  virtual void erase(const std::string& table, RowId row) = 0;
  virtual void execute(const sql::Update& resolved, const sql::Parameters& parameters) = 0;

  /// What whoever keeps the store should be told at the start, as a sentence; empty where all is well.
  virtual std::string advice() const { return {}; }

  /// Says to all other workstations what this one is at ("caisse 3"), instead of what it said before; empty:
  /// at nothing. Ends with the workstation, however that ends. Gives how many others say the same; 0 as well
  /// where that cannot be known. Costs a round trip, and no write. Never throws.
  virtual std::size_t announce(const std::string& /*occupation*/) { return 0; }

  /// What the store wants of those who hold its versions.
  enum class Relief {
    Newest,  ///< Hold none but the newest one, and that only to show the same rows in it.
    None     ///< Hold none.
  };
  using Reliever = std::function<void(Relief)>;
  /// Calls `reliever`, as long as somebody keeps it, whenever too many versions are held or the log has to be
  /// folded: possibly from `snapshot` or a write. It may ask for snapshots, and must not write or throw.
  virtual void relieveBy(std::weak_ptr<const Reliever> reliever) = 0;

  /// To be called when the user does nothing, every few seconds: lets go of versions and folds the log. Never
  /// waits. Throws StoreError, once, where the store is no more what was opened.
  virtual void idle() = 0;
  /// To be called when a gesture has ended: does the same where the log has grown long without a quiet moment
  /// (some milliseconds, once in a hundred taps). Never throws.
  virtual void pause() = 0;

 protected:
  /// A OneVersion begins or ends; there may be several at a time. An engine that hands out a version without
  /// asking anybody has nothing to do.
  virtual void shareVersion(bool /*begins*/) {}
};

}  // namespace tavoline
