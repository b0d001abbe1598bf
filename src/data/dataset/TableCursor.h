#pragma once

#include <deque>
#include <map>
#include <optional>

#include "data/dataset/Cursor.h"
#include "data/dataset/OwnWrites.h"
#include "data/dataset/RowList.h"
#include "data/dataset/TablePages.h"

namespace tavoline {

/// A keyset cursor over `select * from` one table: a position in the pages of its snapshot with what this
/// cursor wrote laid over them. Rows by number come from a list of row numbers, which is made for just who
/// counts or jumps.
class TableCursor : public Cursor {
 public:
  explicit TableCursor(CursorSource source);

  void filter(const sql::ExprPtr& filter) override;
  bool first() override;
  bool last() override;
  bool next() override;
  bool prior() override;
  bool onRow() override { return settle(); }
  Value value(std::size_t column) override;
  std::vector<Value> values() override;
  std::size_t count() override;
  std::size_t counted() override;
  bool countOn(std::size_t rows) override;
  Value valueAt(std::size_t record, std::size_t column) override;
  int record() override;
  bool moveTo(std::size_t record) override;
  bool locate(std::size_t column, const Value& value) override;
  int recordOf(std::size_t column, const Value& value) override;
  void refresh(std::shared_ptr<const Snapshot> newer) override;
  void renew(Store& store) override;

  bool updatable() const override { return true; }
  void insert(Store& store, const Written& fields) override;
  void update(Store& store, const Written& fields) override;
  void erase(Store& store) override;

 private:
  enum class Where {
    Unread,  // on the first row, whichever that is
    None,    // there is no visible row
    Page,    // in page_, at at_
    Own,     // on ownAt_, a row inserted here
    Aside,   // on aside_, a row that was written here and that the filter hides, between its neighbours
    Lost     // at lost_, whose row may be gone: the next one takes over, or else the one before
  };

  bool settle();
  bool settleAfterLoss();
  TableRow& current();
  bool load(const Reading& reading);
  bool stand(std::optional<RowId> inserted);
  void lose(const TableRow& row);
  OwnWrites& own();
  RowList& list();

  std::vector<TableRow> page(Reading reading, bool& exhausted);
  std::vector<TableRow> listedPage(const Reading& reading, bool& exhausted);
  std::optional<TableRow> search(std::size_t column, const Value& value);
  TableRow& rowAt(std::size_t record);
  void written(const TableRow& row);

  TablePages pages_;
  OwnWrites own_;
  std::optional<RowList> list_;
  std::map<RowId, TableRow> listRead_;  // of the snapshot, read for those who ask by number

  Where where_ = Where::Unread;
  std::deque<TableRow> page_;
  bool pageStart_ = false, pageEnd_ = false;  // no row of the snapshot before, behind the page
  std::size_t pageSize_ = 0;
  std::size_t at_ = 0;
  RowId ownAt_ = 0;
  std::optional<TableRow> aside_;
  RowKey lost_;  // of the row aside, too
  RowId lostRow_ = 0;
  bool lostOwn_ = false;  // it was inserted here
};

}  // namespace tavoline
