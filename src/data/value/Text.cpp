#include "data/value/Text.h"

#include "data/value/Folding.h"

namespace tavoline {
namespace {

char lower(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
}

/// Reads a text one folded character at a time, without a copy.
class Reader {
 public:
  explicit Reader(std::string_view text) : text_(text) {}
  bool done() const { return at_ >= text_.size(); }
  std::size_t at() const { return at_; }
  void moveTo(std::size_t at) { at_ = at; }
  char32_t next() { return foldCharacter(decode(text_, at_)); }
  char32_t peek() const {
    std::size_t at = at_;
    return foldCharacter(decode(text_, at));
  }

 private:
  std::string_view text_;
  std::size_t at_ = 0;
};

}  // namespace

bool sameName(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i) {
    if (lower(a[i]) != lower(b[i])) return false;
  }
  return true;
}

std::string foldName(std::string_view name) {
  std::string folded(name);
  for (char& c : folded) c = lower(c);
  return folded;
}

std::string foldCase(std::string_view utf8) {
  std::string folded;
  folded.reserve(utf8.size());
  for (std::size_t at = 0; at < utf8.size();) encode(foldCharacter(decode(utf8, at)), folded);
  return folded;
}

std::size_t characterCount(std::string_view utf8) {
  std::size_t count = 0;
  for (std::size_t at = 0; at < utf8.size(); ++count) decode(utf8, at);
  return count;
}

bool isUtf8(std::string_view bytes) {
  const auto at = [&](std::size_t i) { return i < bytes.size() ? static_cast<unsigned char>(bytes[i]) : 0U; };
  for (std::size_t i = 0; i < bytes.size();) {
    const unsigned first = at(i);
    const std::size_t more = first < 0x80 ? 0 : first < 0xC2 ? 4 : first < 0xE0 ? 1 : first < 0xF0 ? 2 : 3;
    if (more == 4 || first > 0xF4) return false;
    for (std::size_t k = 1; k <= more; ++k)
      if ((at(i + k) & 0xC0) != 0x80) return false;
    const unsigned second = at(i + 1);
    const bool overlong = (first == 0xE0 && second < 0xA0) || (first == 0xF0 && second < 0x90);
    const bool outside = (first == 0xED && second > 0x9F) || (first == 0xF4 && second > 0x8F);
    if (overlong || outside) return false;
    i += more + 1;
  }
  return true;
}

std::string_view trimmed(std::string_view text) {
  const auto first = text.find_first_not_of(" \t\r\n");
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(" \t\r\n") - first + 1);
}

std::string inQuotes(std::string_view text) {
  std::string result = "'";
  for (const char c : text) {
    if (c == '\'') result += c;
    result += c;
  }
  return result + '\'';
}

std::string inBareQuotes(std::string_view text) {
  std::string result;
  if (text.find('\'') != text.npos) result += kBrokenQuotes;
  result += '\'';
  result += text;
  return result + '\'';
}

bool matchesLike(std::string_view text, std::string_view pattern) {
  Reader t(text), p(pattern);
  // Where to take up again after the last `%`: it swallows one more character of the text at each failure.
  bool wild = false;
  std::size_t wildPattern = 0, wildText = 0;
  while (!t.done()) {
    if (!p.done() && p.peek() == U'%') {
      p.next();
      wild = true;
      wildPattern = p.at();
      wildText = t.at();
      continue;
    }
    if (!p.done()) {
      const char32_t expected = p.next();
      if (expected == t.next() || expected == U'_') continue;
    }
    if (!wild) return false;
    t.moveTo(wildText);
    t.next();
    wildText = t.at();
    p.moveTo(wildPattern);
  }
  while (!p.done() && p.peek() == U'%') p.next();
  return p.done();
}

}  // namespace tavoline
