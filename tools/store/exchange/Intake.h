#pragma once

#include <optional>

#include "tools/store/Filler.h"
#include "tools/store/exchange/Cells.h"
#include "tools/store/exchange/KeysSeen.h"
#include "tools/store/exchange/Progress.h"
#include "tools/store/exchange/Report.h"
#include "tools/store/exchange/Rows.h"

namespace tavoline::tool {

/// Takes the rows of a source into a store in the making, and keeps the account: each value becomes what its
/// column holds, a row that a key or a width refuses is left out and told.
class Intake : public RowReceiver {
 public:
  struct Manner {
    bool strict = false;         ///< A refused row is a StoreError.
    bool freesPictures = false;  ///< Takes pictures out of the objects around them.
  };
  /// Without a filler nothing is written. Both have to outlive it.
  Intake(Filler* filler, ImportReport& report, Manner manner);

  void expect(std::int64_t rows) override { progress_.expect(rows); }
  void table(const schema::Table& table, const Columns& columns) override;
  void row(std::vector<Value>& values) override;
  void remark(const std::string& sentence) override { report_.remarks.push_back(sentence); }

  /// Ends the last table and reads all of them back from the store. Throws StoreError unless each holds just
  /// what was given to it, or where a table never came.
  void finish();

 private:
  void closeTable();
  void requireAllTables() const;
  void readBack(ImportReport::Table& counted);
  std::optional<std::string> whyRefused();  ///< What keeps the row out; turns its values into the columns'.
  Value freed(const Value& picture, const schema::Column& column);
  std::string nameOfRow() const;
  void refuse(const std::string& reason);

  Filler* filler_;
  ImportReport& report_;
  Manner manner_;
  Progress progress_;

  const schema::Table* table_ = nullptr;
  std::vector<std::size_t> places_;  // of the given values among the table's columns
  std::vector<Value> row_;           // in the order of the table's columns
  std::vector<Value> absent_;        // what the columns hold that do not come
  std::optional<Inserter> inserter_;
  std::optional<KeysSeen> keys_;
  std::size_t keyPlace_ = 0;
  std::optional<RowDigest> digest_;
};

}  // namespace tavoline::tool
