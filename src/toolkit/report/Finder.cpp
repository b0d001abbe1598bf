#include "data/value/Text.h"
#include "toolkit/report/Document.h"

namespace tavoline::report {

Finder::Finder(const Document& document, std::string_view text)
    : document_(document), folded_(foldCase(text)) {}

bool Finder::matches(const Item& item) const {
  if (!item.object->hasText() || item.object->kind == ObjectKind::BarCode) return false;
  return foldCase(item.text).find(folded_) != std::string::npos;
}

bool Finder::firstIn(std::size_t page, std::size_t fromWord, Hit& hit) const {
  for (const Item& item : document_.items(page)) {
    if (item.word < fromWord || !matches(item)) continue;
    hit = {page, item.word};
    return true;
  }
  return false;
}

bool Finder::lastIn(std::size_t page, std::size_t beforeWord, Hit& hit) const {
  bool found = false;
  for (const Item& item : document_.items(page)) {
    if (item.word >= beforeWord || !matches(item)) continue;
    hit = {page, item.word};
    found = true;
  }
  return found;
}

bool Finder::first(std::size_t page, Hit& hit) const {
  const std::size_t count = document_.pageCount();
  for (std::size_t i = 0; i < count; ++i) {
    if (firstIn((page + i) % count, 0, hit)) return true;
  }
  return false;
}

bool Finder::next(Hit& from) const {
  if (firstIn(from.page, from.word + 1, from)) return true;
  return first((from.page + 1) % document_.pageCount(), from);
}

bool Finder::previous(Hit& from) const {
  if (lastIn(from.page, from.word, from)) return true;
  const std::size_t count = document_.pageCount();
  for (std::size_t i = 1; i <= count; ++i) {
    if (lastIn((from.page + count - i) % count, static_cast<std::size_t>(-1), from)) return true;
  }
  return false;
}

}  // namespace tavoline::report
