#pragma once

#include <deque>
#include <map>
#include <optional>

#include "data/dataset/Cursor.h"

namespace tavoline {

/// The row numbers of a table cursor's visible rows, in order: the first ones, or once it is whole all.
struct RowList {
  std::vector<RowId> rids;
  std::size_t own = 0;  ///< How many at the end are own rows.
  bool whole = false;
  std::unique_ptr<Rows> stream;  ///< Of all rows, in any order, while they are counted.
  std::vector<RowId> streamed;
};

/// A keyset cursor over `select * from` one table. Rows are read in pages around the position, and listed (by
/// row number only) just for who counts or jumps: the first stretch at once, the rest from whatever index is
/// the narrowest. What this cursor wrote since Open is laid over the snapshot: changed rows in their old
/// places, inserted rows behind the last, the filter evaluated in memory for these few. Pictures are read one
/// by one, when asked for.
class TableCursor : public Cursor {
 public:
  explicit TableCursor(CursorSource source);

  void filter(const sql::ExprPtr& filter) override;
  bool first() override;
  bool last() override;
  bool next() override;
  bool prior() override;
  bool onRow() override;
  Value value(std::size_t column) override;
  std::vector<Value> values() override;
  std::size_t count() override;
  std::size_t counted() override;
  bool countOn(std::size_t rows) override;
  Value valueAt(std::size_t record, std::size_t column) override;
  int record() override;
  bool moveTo(std::size_t record) override;
  bool locate(std::size_t column, const Value& value) override;
  void refresh(std::shared_ptr<const Snapshot> newer) override;
  void renew(Store& store) override;

  bool updatable() const override { return true; }
  void insert(Store& store, const Written& fields) override;
  void update(Store& store, const Written& fields) override;
  void erase(Store& store) override;

 private:
  /// Where a row stands: its values in the statement's order, then its row number.
  using Key = std::vector<Value>;

  struct Row {
    RowId rid = 0;
    std::vector<Value> values;
    std::vector<bool> unread;  // pictures not fetched yet
    Key key;                   // of its place, which a change by this cursor does not move
  };
  struct Change {
    std::optional<Row> row;  // absent: deleted
    Key key;
  };
  enum class Where {
    Unread,
    Page,
    Own,
    Lost,  // the row at `lost_` may be gone; the next one takes over
    Aside  // on `aside_`, between its neighbours
  };

  // TableCursor.cpp: the position
  bool settle();
  bool settleAfterLoss();
  void leaveAside();
  bool isOwn(RowId rid) const;
  std::size_t ownIndex(RowId rid) const;
  Row& current();
  bool ownNext(std::size_t from);
  bool ownPrior(std::size_t from);
  bool visible(const Row& row) const;
  void afterWrite(const Row& row);
  std::vector<Row> ownRows();

  // TablePages.cpp: reading
  std::vector<Row> fetch(const sql::ExprPtr& extra, bool backwards, std::size_t limit, bool& exhausted);
  std::vector<Row> page(const std::optional<Key>& from, bool inclusive, bool backwards, bool& exhausted);
  std::vector<Row> listedPage(const std::optional<Key>& from, bool inclusive, bool backwards,
                              bool& exhausted);
  bool loadPage(const std::optional<Key>& from, bool inclusive, bool backwards);
  sql::ExprPtr beyond(const Key& key, bool inclusive, bool backwards, std::size_t part = 0) const;
  bool before(const Key& a, const Key& b) const;
  Key keyOf(const std::vector<Value>& values, RowId rid) const;
  sql::ExprPtr membership() const;
  std::optional<Row> find(RowId rid);
  std::vector<Row> findAll(const std::vector<RowId>& rids);
  Row readRow(const Rows& rows) const;
  const Value& fetched(Row& row, std::size_t column);

  // TableList.cpp: rows by number
  RowList& list();
  const std::vector<RowId>& wholeList();
  RowId listed(std::size_t record);
  Row& rowAt(std::size_t record);
  sql::Select listing() const;
  void listFirstRows();
  void listInOrder();
  void layChangesOver(std::vector<RowId>& rids, RowId last) const;
  void addOwnRows();
  std::vector<RowId>::iterator placeOf(RowId rid);
  void unlist(RowId rid);

  CursorSource source_;
  std::string table_;
  std::vector<std::string> tables_;
  std::vector<std::size_t> readColumns_;             // columns of a page: all but pictures
  std::vector<std::pair<std::size_t, bool>> order_;  // column index, descending

  sql::ExprPtr filter_;           // resolved for rows in memory
  sql::Select narrowed_;          // the statement under the filter
  std::optional<RowId> ceiling_;  // highest row number at Open, once a refresh has moved on from that version
  std::map<RowId, Change> changes_;
  std::vector<RowId> own_;  // inserted by this cursor, in that order: ascending
  std::map<RowId, Row> ownRead_;

  Where where_ = Where::Unread;
  std::deque<Row> page_;
  bool pageStart_ = false, pageEnd_ = false;  // no row before, behind the page
  std::size_t pageSize_ = 0;
  std::size_t at_ = 0;  // in page_, or in own_
  Key lost_;
  RowId lostRow_ = 0;
  std::optional<Row> aside_;  // the current row, which was written here and which the filter hides

  std::optional<RowList> list_;
  std::map<RowId, Row> listRead_;
};

}  // namespace tavoline
