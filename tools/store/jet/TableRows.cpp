#include "tools/store/jet/TableRows.h"

// First, for itself: the next header takes it in as C, which its newer versions are not.
#include <glib.h>

#include <mdbtools.h>

#include <algorithm>
#include <bit>
#include <cstring>

#include "data/value/Errors.h"
#include "data/value/Text.h"
#include "tools/store/exchange/Fitting.h"
#include "tools/store/jet/Values.h"

namespace tavoline::tool::jet {
namespace {

constexpr std::size_t kOwnerAt = 4, kRowCountAt = 12, kMapAt = 55;
constexpr std::uint8_t kDefinitionPage = 2, kMapPage = 5, kMapOfRuns = 0, kMapOfPages = 1;
constexpr std::size_t kMapHead = 4;  // of a page of map
constexpr std::size_t kFewestBytes = 4, kMostMoves = 8;

MdbColumn* columnAt(MdbTableDef* table, std::size_t i) {
  return static_cast<MdbColumn*>(g_ptr_array_index(table->columns, i));
}

template <typename Number>
Number rawAt(Part bytes) {
  Number number;
  std::memcpy(&number, bytes.data(), sizeof number);
  return number;
}

std::size_t sizeOf(int type) {
  switch (type) {
    case MDB_BYTE:
      return 1;
    case MDB_INT:
      return 2;
    case MDB_LONGINT:
    case MDB_FLOAT:
      return 4;
    case MDB_MONEY:
    case MDB_DOUBLE:
    case MDB_DATETIME:
      return 8;
    case MDB_NUMERIC:
      return 17;
    default:
      return 0;
  }
}

bool isReadable(int type) {
  return sizeOf(type) > 0 || type == MDB_BOOL || type == MDB_TEXT || type == MDB_MEMO || type == MDB_OLE ||
         type == MDB_BINARY;
}

Value bytesOf(Bytes bytes) {
  return SharedBytes(std::make_shared<const Bytes>(std::move(bytes)));
}

}  // namespace

TableRows::TableRows(JetFile& file, const schema::Table& schema, S_MdbTableDef* table)
    : file_(file), schema_(schema), table_(table) {
  for (std::size_t i = 0; i < table_->num_cols; ++i) {
    const MdbColumn& column = *columnAt(table_, i);
    const auto known = std::find_if(schema_.columns.begin(), schema_.columns.end(),
                                    [&](const schema::Column& c) { return sameName(c.name, column.name); });
    if (known == schema_.columns.end() || !isReadable(column.col_type)) {
      unknown_.emplace_back(column.name);
      continue;
    }
    columns_.push_back(&*known);
    places_.push_back(i);
  }
  values_.resize(columns_.size());
  readMap();
}

std::int64_t TableRows::declared() const {
  return table_->num_rows;
}

void TableRows::damaged(RowPlace place) const {
  file_.damaged("table « " + std::string(schema_.name) + " », page " + std::to_string(place.page) +
                ", ligne " + std::to_string(place.row));
}

void TableRows::readMap() {
  const std::string where = "carte des pages de « " + std::string(schema_.name) + " »";
  Page page;
  file_.read(static_cast<std::uint32_t>(table_->entry->table_pg), page);
  if (page[0] != kDefinitionPage) file_.damaged(where);
  const RowPlace place = RowPlace::of(longAt(page, kMapAt));
  file_.read(place.page, page);
  const Part map = file_.row(page, place).bytes;
  if (map.size() < 5) file_.damaged(where);
  if (map[0] == kMapOfRuns) return addPages(map.subspan(5), longAt(map, 1));
  if (map[0] != kMapOfPages) file_.damaged(where);
  std::uint32_t first = 0;
  for (std::size_t at = 1; at + 4 <= map.size(); at += 4, first += 8 * (kPageSize - kMapHead)) {
    const std::uint32_t number = longAt(map, at);
    if (number == 0) continue;
    Page part;
    file_.read(number, part);
    if (part[0] != kMapPage) file_.damaged(where);
    addPages(Part(part).subspan(kMapHead), first);
  }
}

void TableRows::addPages(Part bits, std::uint32_t first) {
  for (std::size_t i = 0; i < bits.size(); ++i)
    for (unsigned byte = bits[i]; byte != 0; byte &= byte - 1)
      pages_.push_back(first + static_cast<std::uint32_t>(8 * i) +
                       static_cast<std::uint32_t>(std::countr_zero(byte)));
}

void TableRows::requireOwner(const Page& page, std::uint32_t number) const {
  if (page[0] != 1 || longAt(page, kOwnerAt) != table_->entry->table_pg)
    file_.damaged("la page " + std::to_string(number) + " n'est pas de la table « " +
                  std::string(schema_.name) + " » comme le dit sa carte");
}

void TableRows::read(const std::function<void(std::vector<Value>&)>& take) {
  count_ = 0;
  for (const std::uint32_t page : pages_) readPage(page, take);
  if (declared() != 0 && count_ != declared())
    file_.damaged("la table « " + std::string(schema_.name) + " » a " + std::to_string(count_) +
                  " lignes au lieu de " + std::to_string(declared()));
}

void TableRows::readPage(std::uint32_t number, const std::function<void(std::vector<Value>&)>& take) {
  file_.read(number, page_);
  requireOwner(page_, number);
  file_.standOn(number);
  for (std::uint32_t i = 0; i < wordAt(page_, kRowCountAt); ++i) {
    const RowPlace place{number, i};
    const JetFile::Row row = file_.row(page_, place);
    if (row.deleted) continue;
    if (row.pointer) {
      if (row.bytes.size() < kFewestBytes) damaged(place);
      follow(RowPlace::of(longAt(row.bytes, 0)));
      file_.standOn(number);
    } else {
      crack(row, place);
    }
    ++count_;
    take(values_);
  }
}

void TableRows::follow(RowPlace place) {
  for (std::size_t moves = 0; moves < kMostMoves; ++moves) {
    file_.read(place.page, moved_);
    requireOwner(moved_, place.page);
    const JetFile::Row row = file_.row(moved_, place);
    if (!row.pointer) {
      file_.standOn(place.page);
      return crack(row, place);
    }
    if (row.bytes.size() < kFewestBytes) damaged(place);
    place = RowPlace::of(longAt(row.bytes, 0));
  }
  damaged(place);
}

// The parts of a row have to fit into it: how many columns it knows, which of them are there, where those of
// varying length begin.
void TableRows::requireForm(const JetFile::Row& row, RowPlace place) const {
  const Part bytes = row.bytes;
  if (bytes.size() < kFewestBytes) damaged(place);
  const std::size_t columns = wordAt(bytes, 0), mask = (columns + 7) / 8;
  if (columns == 0 || columns > MDB_MAX_COLS || 2 + mask > bytes.size()) damaged(place);
  if (table_->num_var_cols == 0) return;
  if (2 + mask + 2 > bytes.size()) damaged(place);
  const std::size_t countAt = bytes.size() - mask - 2;
  const std::size_t varying = wordAt(bytes, countAt);
  if (varying > columns || 2 + 2 * (varying + 1) > countAt) damaged(place);
  const std::size_t table = countAt - 2 * (varying + 1);  // backward: first the end of the last one
  std::size_t end = table;
  for (std::size_t i = 0; i <= varying; ++i) {
    const std::size_t start = wordAt(bytes, table + 2 * i);
    if (start < 2 || start > end) damaged(place);
    end = start;
  }
}

void TableRows::crack(const JetFile::Row& row, RowPlace place) {
  requireForm(row, place);
  MdbField fields[MDB_MAX_COLS];
  if (mdb_crack_row(table_, static_cast<int>(row.start), row.bytes.size(), fields) < 0) damaged(place);
  for (std::size_t i = 0; i < columns_.size(); ++i) {
    const MdbField& field = fields[places_[i]];
    if (field.is_null) {
      values_[i] = value(places_[i], {}, true, place);
      continue;
    }
    const auto start = static_cast<std::size_t>(field.start), size = static_cast<std::size_t>(field.siz);
    const bool flag = columnAt(table_, places_[i])->col_type == MDB_BOOL;  // it stands in the mask alone
    if (!flag && (field.start < 0 || field.siz < 0 || start < row.start ||
                  start + size > row.start + row.bytes.size()))
      damaged(place);
    values_[i] = value(places_[i], flag ? Part() : row.bytes.subspan(start - row.start, size), false, place);
  }
}

Value TableRows::value(std::size_t number, Part bytes, bool null, RowPlace place) {
  const MdbColumn& column = *columnAt(table_, number);
  if (column.col_type == MDB_BOOL) return null ? 0 : -1;
  if (null) return {};
  if (bytes.size() < sizeOf(column.col_type)) damaged(place);
  const auto text = [&](Part stored) -> Value {
    auto decoded = textOf(stored);
    if (!decoded) damaged(place);
    mended_ += decoded->mended;
    return std::move(decoded->text);
  };
  switch (column.col_type) {
    case MDB_BYTE:
      return std::int64_t{bytes[0]};
    case MDB_INT:
      return std::int64_t{rawAt<std::int16_t>(bytes)};
    case MDB_LONGINT:
      return std::int64_t{rawAt<std::int32_t>(bytes)};
    case MDB_MONEY:
      return currencyOf(rawAt<std::int64_t>(bytes));
    case MDB_FLOAT:
      return double{rawAt<float>(bytes)};
    case MDB_DOUBLE:
      return rawAt<double>(bytes);
    case MDB_NUMERIC:
      return decimalOf(bytes, column.col_scale);
    case MDB_DATETIME:
      if (const auto date = dateOf(rawAt<double>(bytes))) return *date;
      return exactText(rawAt<double>(bytes)) + " jours";  // which no date column takes
    case MDB_TEXT:
      return text(bytes);
    case MDB_MEMO:
      return text(file_.longValue(bytes));
    case MDB_OLE:
      return bytesOf(file_.longValue(bytes));
    default:
      return bytesOf({bytes.begin(), bytes.end()});
  }
}

}  // namespace tavoline::tool::jet
