#include "toolkit/report/model/Finder.h"

#include "data/value/Text.h"

namespace tavoline::report {

Finder::Finder(const Document& document, std::string_view text, Progress progress)
    : document_(document), folded_(foldCase(text)), progress_(std::move(progress)) {}

bool Finder::turn(std::size_t looked) const {
  givenUp_ = progress_ && !progress_(looked, document_.pageCount());
  return !givenUp_;
}

bool Finder::matches(const Item& item) const {
  if (!item.object->hasText() || item.object->kind == ObjectKind::BarCode) return false;
  return foldCase(item.text).find(folded_) != std::string::npos;
}

// Most pages hold no hit, and one look at all their words shows it.
bool Finder::mayHold(std::size_t page) const {
  return foldCase(document_.page(page).words()).find(folded_) != std::string::npos;
}

bool Finder::firstIn(std::size_t page, std::size_t fromWord, Hit& hit) const {
  if (!mayHold(page)) return false;
  for (const Item& item : document_.items(page)) {
    if (item.word < fromWord || !matches(item)) continue;
    hit = {page, item.word};
    return true;
  }
  return false;
}

bool Finder::lastIn(std::size_t page, std::size_t beforeWord, Hit& hit) const {
  if (!mayHold(page)) return false;
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
    if (!turn(i + 1)) return false;
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
    if (!turn(i)) return false;
  }
  return false;
}

}  // namespace tavoline::report
