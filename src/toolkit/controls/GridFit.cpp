#include "toolkit/controls/GridFit.h"

#include <QtWidgets/QHeaderView>
#include <algorithm>

#include "toolkit/controls/ColumnFit.h"
#include "toolkit/controls/GridCells.h"

namespace tavoline {

namespace {

constexpr int titlePixels = 44;      // of one line
constexpr int titleAir = 14;         // above and below titles of more lines
constexpr int widestFit = 420;       // pixels that fitting gives a column at most
constexpr int shortText = 60;        // pixels of a text that is not worth cutting
constexpr int shortWord = 75;        // the same of a word, whose letters can be made smaller
constexpr double smallFigure = 0.6;  // of its usual width

}  // namespace

void DBGrid::Fit::forget() {
  texts_.clear();
  from_ = end_ = 0;
  room_ = -1;
}

void DBGrid::Fit::now() {
  const bool wider = measure();
  if (wider || grid_.viewport()->width() != room_) setWidths();
}

// True if a column needs more than before.
bool DBGrid::Fit::measure() {
  const int rowHeight = grid_.verticalHeader()->defaultSectionSize();
  const int from = std::max(0, grid_.rowAt(0));
  const int end = std::min(grid_.model_->rowCount(), from + grid_.viewport()->height() / rowHeight + 1);
  const std::vector<Texts> before = texts_;
  texts_.resize(grid_.model_->shownColumns().size());
  if (from >= end_ || end <= from_) from_ = end_ = from;
  measureRows(from, from_);
  measureRows(end_, end);
  from_ = std::min(from, from_);
  end_ = std::max(end, end_);
  return !std::equal(before.begin(), before.end(), texts_.begin(), texts_.end(),
                     [](const Texts& a, const Texts& b) { return a.whole == b.whole && a.cut == b.cut; });
}

void DBGrid::Fit::measureRows(int from, int end) {
  const QFontMetrics metrics(grid_.font());
  const bool wraps = grid_.wordWrap();
  for (int row = from; row < end; ++row) {
    for (std::size_t column = 0; column < texts_.size(); ++column) {
      const GridColumn& shown = grid_.model_->shownColumns()[column];
      const QString text = grid_.model_->index(row, int(column)).data().toString();
      const int width = metrics.horizontalAdvance(text);
      const int word = longestWord(text, metrics);
      const int unbroken = wraps ? word : width;
      Texts& texts = texts_[column];
      const int cut = shown.isFigure() ? unbroken : std::min(unbroken, wraps ? shortWord : shortText);
      // A number in smaller letters, a date over its time.
      const int bare = shown.isNumber() ? int(width * smallFigure) : std::min(cut, word);
      texts.whole = std::max(texts.whole, width);
      texts.cut = std::max(texts.cut, cut);
      texts.bare = std::max(texts.bare, bare);
    }
  }
}

// As wide as the titles and the rows that were in sight. Where that is too much, titles take two lines, then
// the widest texts are cut, or with `wordWrap` broken between their words.
void DBGrid::Fit::setWidths() {
  room_ = grid_.viewport()->width();
  QHeaderView& heads = *grid_.horizontalHeader();
  const int air = 2 * gridPadding(grid_) + 1;  // letters begin and end within pixels
  QFont bold = grid_.font();
  bold.setBold(true);
  const QFontMetrics titles(bold);
  const std::vector<GridColumn>& columns = grid_.model_->shownColumns();
  std::vector<ColumnWish> wishes;
  std::size_t rest = columns.size() - 1;
  for (std::size_t column = 0; column < columns.size(); ++column) {
    const GridColumn& shown = columns[column];
    const Texts& texts = texts_[column];
    if (shown.wide) rest = column;
    const int narrowest = shown.narrowestTitle(titles);
    const int broken = grid_.wordWrap() ? longestWord(shown.title, titles) : narrowest;
    const int whole = std::min(std::max(texts.whole, narrowest) + air, std::max(widestFit, texts.cut + air));
    wishes.push_back({std::max({shown.width, heads.sectionSizeHint(int(column)), whole}), whole,
                      std::max(texts.cut, broken) + air, std::max(texts.bare, broken) + air});
  }
  std::vector<int> widths = fitColumns(wishes, rest, room_);
  if (grid_.wordWrap()) narrowBroken(widths, wishes, rest);
  int tallest = 0;
  const QSignalBlocker once(&heads);  // the grid would paint itself again for each column
  for (std::size_t column = 0; column < widths.size(); ++column) {
    const bool takesRest = heads.sectionResizeMode(int(column)) == QHeaderView::Stretch;
    if (!takesRest) grid_.setColumnWidth(int(column), widths[column]);  // else the heads are laid out again
    const QRect room(0, 0, widths[column] - air + 1, grid_.viewport()->height());
    tallest = std::max(tallest, titles.boundingRect(room, Qt::TextWordWrap, columns[column].title).height());
  }
  heads.setFixedHeight(std::max(titlePixels, tallest + titleAir));
  heads.length();  // stretches the last column now, and not on a timer
  grid_.updateGeometries();
}

}  // namespace tavoline
