#include "data/dataset/Cursor.h"

#include "data/dataset/ResultCursor.h"
#include "data/dataset/TableCursor.h"
#include "data/value/Errors.h"

namespace tavoline {

bool Cursor::countOn(std::size_t) {
  return true;
}
void Cursor::insert(Store&, const Written&) {
  throw DatasetError("Ces données ne peuvent pas être modifiées ici.");
}
void Cursor::update(Store&, const Written&) {
  throw DatasetError("Ces données ne peuvent pas être modifiées ici.");
}
void Cursor::erase(Store&) {
  throw DatasetError("Ces données ne peuvent pas être supprimées ici.");
}

std::unique_ptr<Cursor> makeCursor(CursorSource source) {
  if (source.select.updatable) return std::make_unique<TableCursor>(std::move(source));
  return std::make_unique<ResultCursor>(std::move(source));
}

}  // namespace tavoline
