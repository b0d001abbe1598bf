#include "toolkit/report/model/Lines.h"

#include <algorithm>

namespace tavoline::report {

namespace {

constexpr double kSameLine = 4;       // units by which the tops of texts on one line may differ
constexpr double kLineSpacing = 1.2;  // of the font size

void addWords(std::vector<Word>& words, const Item& item, Reading reading) {
  if (!item.object->hasText() || item.object->kind == ObjectKind::BarCode) return;
  if (reading == Reading::Lines && item.text.empty()) return;
  const double step = item.object->fontSize * kUnitsPerPoint * kLineSpacing;
  Word word{item.rect, std::string(item.text), item.object->hAlign};
  std::size_t end = reading == Reading::Lines ? word.text.find('\n') : std::string::npos;
  while (end != std::string::npos) {
    Word line = word;
    line.text = word.text.substr(0, end);
    words.push_back(line);
    word.text.erase(0, end + 1);
    word.rect.top += step;
    end = word.text.find('\n');
  }
  words.push_back(std::move(word));
}

}  // namespace

std::vector<std::vector<Word>> readingLines(const std::vector<Item>& items, Reading reading) {
  std::vector<Word> words;
  for (const Item& item : items) addWords(words, item, reading);
  std::stable_sort(words.begin(), words.end(),
                   [](const Word& a, const Word& b) { return a.rect.top < b.rect.top; });
  std::vector<std::vector<Word>> lines;
  double top = 0;
  for (Word& word : words) {
    if (lines.empty() || word.rect.top > top + kSameLine) {
      lines.emplace_back();
      top = word.rect.top;
    }
    lines.back().push_back(std::move(word));
  }
  std::erase_if(lines, [](const std::vector<Word>& line) {
    return std::all_of(line.begin(), line.end(), [](const Word& word) { return word.text.empty(); });
  });
  for (auto& line : lines) {
    std::stable_sort(line.begin(), line.end(),
                     [](const Word& a, const Word& b) { return a.rect.left < b.rect.left; });
  }
  return lines;
}

}  // namespace tavoline::report
