#include "toolkit/controls/GridFit.h"

#include <QtCore/QScopedValueRollback>
#include <QtGui/QFontInfo>
#include <QtWidgets/QHeaderView>
#include <algorithm>
#include <numeric>

#include "toolkit/controls/GridCells.h"

namespace tavoline {

namespace {

constexpr int titlePixels = 44;      // of one line
constexpr int titleAir = 14;         // above and below titles of more lines
constexpr int widestFit = 420;       // pixels that fitting gives a column at most
constexpr int shortText = 60;        // pixels of a text that is not worth cutting
constexpr int shortWord = 75;        // the same of a word, whose letters can be made smaller
constexpr double smallFigure = 0.6;  // of its usual width
constexpr int smallestLetters = 11;  // pixels of all letters, where a grid of many columns would not fit
constexpr int crowdedFigures = 9;    // pixels of a figure among crowded letters
constexpr int lastTitle = 30;        // pixels of the title of a last text, which is cut in such a grid

}  // namespace

void DBGrid::Fit::forget() {
  texts_.clear();
  from_ = end_ = 0;
  room_ = -1;
}

// A scroll bar that the widths bring or take away changes the room on the way.
void DBGrid::Fit::now() {
  if (working_) return;
  const QScopedValueRollback<bool> once(working_, true);
  bool wider = measure();
  for (int tries = 0; tries < 3 && (wider || grid_.viewport()->width() != room_); ++tries) {
    setWidths();
    wider = false;
  }
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

int DBGrid::Fit::usualLetters() const {
  return QFontInfo(grid_.font()).pixelSize();
}

std::vector<ColumnWish> DBGrid::Fit::wishesIn(int letters, bool cutsTitle, std::size_t& rest) const {
  const QHeaderView& heads = *grid_.horizontalHeader();
  const int usual = usualLetters();
  const bool small = letters < usual;
  const int air = 2 * gridPadding(grid_) + 1;  // letters begin and end within pixels
  const auto scaled = [&](int pixels) { return (pixels * letters + usual - 1) / usual; };
  QFont bold = grid_.font();
  bold.setBold(true);
  bold.setPixelSize(letters);
  const QFontMetrics titles(bold);
  const std::vector<GridColumn>& columns = grid_.model_->shownColumns();
  std::vector<ColumnWish> wishes;
  rest = columns.size() - 1;
  for (std::size_t column = 0; column < columns.size(); ++column) {
    const GridColumn& shown = columns[column];
    const Texts& texts = texts_[column];
    if (shown.wide) rest = column;
    const int narrowest = shown.narrowestTitle(titles);
    int broken = grid_.wordWrap() ? longestWord(shown.title, titles) : narrowest;
    const int cut = scaled(texts.cut), oneLine = titleLetters_ ? titles.horizontalAdvance(shown.title) + air
                                                               : heads.sectionSizeHint(int(column));
    const int whole =
        std::min(std::max(scaled(texts.whole), narrowest) + air, std::max(widestFit, cut + air));
    if (cutsTitle && !shown.isFigure() && column == columns.size() - 1) broken = std::min(broken, lastTitle);
    const int figure = std::min(cut, texts.cut * crowdedFigures / usual + 1);
    const int bare = !small ? texts.bare : shown.isNumber() ? figure : cut;
    wishes.push_back({std::max({shown.width, small ? 0 : oneLine, whole}), whole, std::max(cut, broken) + air,
                      std::max(bare, broken) + air});
  }
  return wishes;
}

void DBGrid::Fit::write(int letters) {
  const bool small = letters < usualLetters();
  grid_.setProperty("letters", small ? letters : 0);
}

void DBGrid::Fit::writeTitles() {
  const int letters = grid_.property("letters").toInt();
  if (letters == titleLetters_) return;
  titleLetters_ = letters;
  const QString style = QStringLiteral("QHeaderView::section { font-size: %1px; padding: 0 %2px; }");
  grid_.horizontalHeader()->setStyleSheet(letters ? style.arg(letters).arg(gridPadding(grid_)) : QString());
}

// As wide as the titles and the rows that were in sight. Where that is too much, titles take two lines, then
// the widest texts are cut, or with `wordWrap` broken between their words; all letters of such a grid then
// get smaller together, at the last those of its figures still more, if that makes it fit, or else those of
// single figures.
void DBGrid::Fit::setWidths() {
  room_ = grid_.viewport()->width();
  QHeaderView& heads = *grid_.horizontalHeader();
  std::size_t rest = 0;
  std::vector<ColumnWish> wishes;
  std::vector<int> widths;
  const auto fits = [&](int letters, bool bare, bool cutsTitle = false) {
    write(letters);
    wishes = wishesIn(letters, cutsTitle, rest);
    if (!bare)
      for (ColumnWish& wish : wishes) wish.bare = wish.least;
    widths = fitColumns(wishes, rest, room_);
    return std::accumulate(widths.begin(), widths.end(), 0) <= room_;
  };
  const auto fitsInSmallLetters = [&](bool cutsTitle) {
    for (int letters = usualLetters() - 1; letters >= smallestLetters; --letters)
      if (fits(letters, false, cutsTitle)) return true;
    return false;
  };
  const int usual = usualLetters();
  const bool together =
      grid_.wordWrap() && !fits(usual, false) &&
      (fitsInSmallLetters(false) || fitsInSmallLetters(true) || fits(crowdedLetters, true, true));
  if (!together && !fits(usual, true)) fits(usual, false);  // small figures would not do it either
  writeTitles();
  if (grid_.wordWrap()) narrowBroken(widths, wishes, rest);
  QFont bold = grid_.font();
  bold.setBold(true);
  if (const int small = grid_.property("letters").toInt()) bold.setPixelSize(small);
  const QFontMetrics titles(bold);
  const int air = 2 * gridPadding(grid_) + 1;
  int tallest = 0;
  const QSignalBlocker once(&heads);  // the grid would paint itself again for each column
  for (std::size_t column = 0; column < widths.size(); ++column) {
    const bool takesRest = heads.sectionResizeMode(int(column)) == QHeaderView::Stretch;
    if (!takesRest) grid_.setColumnWidth(int(column), widths[column]);  // else the heads are laid out again
    const QRect room(0, 0, widths[column] - air + 1, grid_.viewport()->height());
    const QString& title = grid_.model_->shownColumns()[column].title;
    tallest = std::max(tallest, titles.boundingRect(room, Qt::TextWordWrap, title).height());
  }
  heads.setFixedHeight(std::max(titlePixels, tallest + titleAir));
  heads.length();  // stretches the last column now, and not on a timer
  grid_.updateGeometries();
}

}  // namespace tavoline
