#pragma once

#include "data/dataset/OwnWrites.h"
#include "data/dataset/TablePages.h"

namespace tavoline {

/// The row numbers of a cursor's visible rows, in order, for who counts or jumps: the first stretch at once,
/// the rest from whatever index is the narrowest. A statement with an order of its own is listed as a whole.
class RowList {
 public:
  /// Both must outlive it; it is to be thrown away when the filter changes, or the version for a refresh.
  /// `beginning` is the first page, where that has been read; if it holds all rows, nothing else is.
  RowList(const TablePages& pages, const OwnWrites& own, const TablePages::Page& beginning = {});

  std::size_t counted() const { return rids_.size(); }
  bool countOn(std::size_t rows);  ///< Counts some `rows` more; whether all are counted.
  bool whole() const { return whole_; }
  std::size_t count();
  bool has(std::size_t record);  ///< Counts all, if it must.
  /// These records and those beside them: a stretch of `size`, as far as it is counted.
  std::vector<RowId> stretch(std::size_t record, std::size_t size) const;
  RowId operator[](std::size_t record) const { return rids_[record]; }
  std::optional<std::size_t> placeOf(RowId rid);  ///< Counts all, if it must.

  /// Of the rows of the snapshot, where they are listed in the order of their numbers, and all of them: the
  /// next `limit` of a reading.
  std::vector<RowId> page(const Reading& reading, std::size_t limit, bool& exhausted) const;

  void countAnew() { stream_.reset(), streamed_.clear(); }  ///< What is under way; another version is read.
  void add(RowId inserted);                                 ///< A visible row inserted just now.
  void remove(RowId rid);  ///< Deleted, or hidden by the filter since it was written.

 private:
  using Place = std::vector<RowId>::const_iterator;
  void listFirst(const TablePages::Page& beginning);
  void listInOrder();
  void layChangesOver(RowId last);
  void end();
  Place ownBegin() const { return rids_.end() - static_cast<std::ptrdiff_t>(own_); }
  Place find(RowId rid) const;

  const TablePages& pages_;
  const OwnWrites& writes_;
  std::vector<RowId> rids_;
  std::size_t own_ = 0;  // how many at the end were inserted here
  bool whole_ = false;
  std::unique_ptr<Rows> stream_;  // of all rows, in any order, while they are counted
  std::vector<RowId> streamed_;
};

}  // namespace tavoline
