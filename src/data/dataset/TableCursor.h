#pragma once

#include <deque>
#include <optional>

#include "data/dataset/Cursor.h"
#include "data/dataset/TableRows.h"

namespace tavoline {

/// A keyset cursor over `select * from` one table: a position in its rows, with a page of them around it.
class TableCursor : public Cursor {
 public:
  explicit TableCursor(CursorSource source) : rows_(std::move(source)) {}

  void filter(const sql::ExprPtr& filter) override;
  bool first() override;
  bool last() override;
  bool next() override;
  bool prior() override;
  bool onRow() override { return settle(); }
  std::optional<RowId> standing() const override;
  Value value(std::size_t column) override;
  std::vector<Value> values() override { return current().values; }
  std::size_t count() override { return rows_.list().count(); }
  std::size_t counted() override { return rows_.list().counted(); }
  bool countOn(std::size_t rows) override { return rows_.list().countOn(rows); }
  Value valueAt(std::size_t record, std::size_t column) override;
  int record() override;
  bool moveTo(std::size_t record) override;
  bool locate(std::size_t column, const Value& value) override;
  int recordOf(std::size_t column, const Value& value) override;
  void refresh(std::shared_ptr<const Snapshot> newer) override;
  void release(const std::shared_ptr<const Snapshot>& newest) override;

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
  bool none();
  void lose(const TableRow& row);
  void stayOn(const TableRow& row);
  FieldValues named(const Written& fields) const;
  int recordOf(RowId rid);

  TableRows rows_;
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
