#pragma once

#include <string>
#include <string_view>

#include "toolkit/report/model/Document.h"

namespace tavoline::report {

/// Where a text was found.
struct Hit {
  std::size_t page = 0;
  std::size_t word = 0;
};

/// Finds a text in memos, without regard to case, page by page.
class Finder {
 public:
  Finder(const Document& document, std::string_view text, Progress progress = {});

  /// The next hit after `from`, or the one before; goes round at the ends. False without a hit.
  bool next(Hit& from) const;
  bool previous(Hit& from) const;
  /// The first hit at or after the head of a page.
  bool first(std::size_t page, Hit& hit) const;
  bool givenUp() const { return givenUp_; }  ///< The search without a hit did not go round.

 private:
  bool turn(std::size_t looked) const;
  bool mayHold(std::size_t page) const;
  bool matches(const Item& item) const;
  bool firstIn(std::size_t page, std::size_t fromWord, Hit& hit) const;
  bool lastIn(std::size_t page, std::size_t beforeWord, Hit& hit) const;

  const Document& document_;
  std::string folded_;
  Progress progress_;
  mutable bool givenUp_ = false;
};

}  // namespace tavoline::report
