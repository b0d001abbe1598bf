#pragma once

#include <functional>
#include <vector>

#include "tools/store/exchange/Rows.h"
#include "tools/store/jet/JetFile.h"

struct S_MdbTableDef;

namespace tavoline::tool::jet {

/// The rows of one table, in stored order, deleted ones left out: along the pages that its own map names.
class TableRows {
 public:
  /// Reads the definition and the map. Throws StoreError for one that does not hold together.
  TableRows(JetFile& file, const schema::Table& schema, S_MdbTableDef* table);

  const Columns& columns() const {
    return columns_;
  }  ///< Of the schema, that the file has, in its own order.
  const std::vector<std::string>& unknown() const {
    return unknown_;
  }  ///< Of the file, that the schema lacks.
  std::int64_t mended() const {
    return mended_;
  }                               ///< Texts read so far of which a character was no whole one.
  std::int64_t declared() const;  ///< Rows that the definition says to hold; may be 0 after an unclean end.

  /// Each row's values, in the order of columns(). Throws StoreError for anything that does not lie where it
  /// should, and where the rows are not as many as declared.
  void read(const std::function<void(std::vector<Value>&)>& take);

 private:
  void readMap();
  void addPages(Part bits, std::uint32_t first);
  void readPage(std::uint32_t number, const std::function<void(std::vector<Value>&)>& take);
  void follow(RowPlace place);
  void crack(const JetFile::Row& row, RowPlace place);
  void requireForm(const JetFile::Row& row, RowPlace place) const;
  void requireOwner(const Page& page, std::uint32_t number) const;
  Value value(std::size_t column, Part bytes, bool null, RowPlace place);
  [[noreturn]] void damaged(RowPlace place) const;

  JetFile& file_;
  const schema::Table& schema_;
  S_MdbTableDef* table_;
  Columns columns_;
  std::vector<std::string> unknown_;
  std::vector<std::size_t> places_;  // of columns_ among the columns of the file
  std::vector<std::uint32_t> pages_;
  std::vector<Value> values_;
  Page page_, moved_;
  std::int64_t count_ = 0, mended_ = 0;
};

}  // namespace tavoline::tool::jet
