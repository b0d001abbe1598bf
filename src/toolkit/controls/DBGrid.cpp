#include "toolkit/controls/DBGrid.h"

#include <QtCore/QAbstractTableModel>
#include <QtCore/QTimer>
#include <QtCore/QTimerEvent>
#include <QtGui/QKeyEvent>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QScrollBar>
#include <algorithm>

#include "toolkit/controls/ColumnFit.h"
#include "toolkit/controls/Focus.h"
#include "toolkit/controls/GridCells.h"
#include "toolkit/controls/GridColumn.h"
#include "toolkit/controls/GridMenu.h"
#include "toolkit/forms/Guard.h"
#include "toolkit/forms/Messages.h"

namespace tavoline {

namespace {

constexpr int rowPixels = 48;     // pixels: a finger's width
constexpr int titlePixels = 44;   // of one line
constexpr int titleAir = 14;      // above and below titles of more lines
constexpr int widestFit = 420;    // pixels that fitting gives a column at most
constexpr int shortText = 100;    // pixels of a text that is not worth cutting
constexpr int shortWord = 75;     // the same of a word, whose letters can be made smaller
constexpr int countingPause = 5;  // ms between two steps of counting, for whatever else is to be done
constexpr std::size_t countedRows = 32768;  // in one step: a few ms
constexpr Qt::Alignment left = Qt::AlignLeft | Qt::AlignVCenter;
constexpr Qt::Alignment right = Qt::AlignRight | Qt::AlignVCenter;

}  // namespace

class DBGrid::Model : public QAbstractTableModel {
 public:
  explicit Model(DBGrid& grid) : QAbstractTableModel(&grid), grid_(grid) {}

  void setColumns(const QStringList& lines) {
    beginResetModel();
    columns_.clear();
    for (const QString& line : lines) columns_.push_back(GridColumn::parse(line));
    endResetModel();
  }

  // Counts the first rows and finds the columns of the dataset as it is open now. A reset would have the
  // headings laid out and the grid painted twice more, so only the rows that came or went are told.
  void reread() {
    Dataset* rows = grid_.dataset();
    const bool open = rows && rows->Active();
    for (GridColumn& column : columns_) {
      column.index = open ? rows->ColumnIndex(column.field) : -1;
      if (column.index >= 0) column.type = rows->Columns()[std::size_t(column.index)].type;
    }
    current_ = open ? rows->RecordNumber() : -1;
    setRows(open ? int(rows->RecordsCounted()) : 0);
  }

  void setRows(int rows) {
    if (rows > rows_) {
      beginInsertRows({}, rows_, rows - 1);
      rows_ = rows;
      endInsertRows();
    } else if (rows < rows_) {
      beginRemoveRows({}, rows, rows_ - 1);
      rows_ = rows;
      endRemoveRows();
    }
  }

  void setCurrent(int record) { current_ = record; }
  int current() const { return current_; }
  const std::vector<GridColumn>& shownColumns() const { return columns_; }

  int rowCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : rows_; }
  int columnCount(const QModelIndex& parent = {}) const override {
    return parent.isValid() ? 0 : int(columns_.size());
  }

  QVariant headerData(int section, Qt::Orientation orientation, int role) const override {
    if (orientation != Qt::Horizontal) return {};
    if (role == Qt::DisplayRole) return columns_[std::size_t(section)].title;
    if (role != Qt::TextAlignmentRole) return {};
    return int(alignment(columns_[std::size_t(section)])) | Qt::TextWordWrap;
  }

  QVariant data(const QModelIndex& index, int role) const override {
    const GridColumn& column = columns_[std::size_t(index.column())];
    switch (role) {
      case Qt::DisplayRole:
      case Qt::EditRole:
        return reading([&] { return QVariant(QString::fromStdString(value(index.row(), column).text())); });
      case Qt::TextAlignmentRole:
        return int(alignment(column));
      case Qt::BackgroundRole:
        return reading([&] { return colour(index.row(), column); });
      default:
        return {};
    }
  }

  bool setData(const QModelIndex& index, const QVariant& typed, int role) override {
    if (role != Qt::EditRole || typed.toString() == data(index, role).toString()) return false;
    return guarded([&] {
      const GridColumn& column = columns_[std::size_t(index.column())];
      Dataset& rows = *grid_.dataset();
      if (rows.RecordNumber() != index.row()) rows.MoveTo(std::size_t(index.row()));
      rows.Edit();
      const bool empty = typed.toString().isEmpty() && column.type != FieldType::Text;
      rows.SetFieldValue(column.field, empty ? Value() : Value(typed.toString().toStdString()));
    });
  }

  Qt::ItemFlags flags(const QModelIndex& index) const override {
    const bool writable = !grid_.readOnly_ && columns_[std::size_t(index.column())].writable;
    return QAbstractTableModel::flags(index) | (writable ? Qt::ItemIsEditable : Qt::NoItemFlags);
  }

 private:
  static Qt::Alignment alignment(const GridColumn& column) {
    const bool number = column.type == FieldType::Integer || column.type == FieldType::Float;
    return number || column.rightAligned ? right : left;
  }

  Value value(int record, const GridColumn& column) const {
    Dataset& rows = *grid_.dataset();
    if (column.index < 0 || !rows.Active()) return {};
    // The row being edited shows its values as edited.
    if (record == current_ && rows.State() == DatasetState::Edit) {
      const Displaying display;
      return rows.FieldValue(column.field);
    }
    return rows.ValueAt(std::size_t(record), std::size_t(column.index));
  }

  QVariant colour(int record, const GridColumn& column) const {
    if (!grid_.OnCellColour || !grid_.dataset()->Active()) return {};
    const Displaying display;
    const QColor wanted = grid_.OnCellColour(*grid_.dataset(), std::size_t(record), column.field);
    return wanted.isValid() ? QVariant(wanted) : QVariant();
  }

  // Nothing may be thrown through a view. A store that fails while it paints empties it, and is told once.
  template <class Read>
  QVariant reading(Read read) const {
    try {
      return read();
    } catch (const std::exception& error) {
      auto* self = const_cast<Model*>(this);
      QTimer::singleShot(0, self, [self, failure = std::string(error.what())] {
        if (self->rows_ == 0) return;
        self->setRows(0);
        ShowMessage(failure);
      });
      return {};
    }
  }

  DBGrid& grid_;
  std::vector<GridColumn> columns_;
  int rows_ = 0;
  int current_ = -1;
};

DBGrid::DBGrid(QWidget* parent)
    : QTableView(parent),
      Binding(this),
      model_(new Model(*this)),
      fingers_(viewport(), FingerScroll::ByTouch) {
  setModel(model_);
  setItemDelegate(new GridCells(this));
  setAlternatingRowColors(true);
  setSelectionBehavior(QAbstractItemView::SelectRows);
  setSelectionMode(QAbstractItemView::SingleSelection);
  setEditTriggers(DoubleClicked | EditKeyPressed | AnyKeyPressed);
  setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
  setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
  setWordWrap(false);
  setShowGrid(false);
  setTabKeyNavigation(false);
  setCornerButtonEnabled(false);
  verticalHeader()->hide();
  verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  verticalHeader()->setMinimumSectionSize(rowPixels);
  verticalHeader()->setDefaultSectionSize(rowPixels);
  horizontalHeader()->setStretchLastSection(true);
  horizontalHeader()->setHighlightSections(false);
  horizontalHeader()->setSectionsClickable(false);
  connect(this, &QTableView::clicked, this, [this](const QModelIndex& index) {
    guarded([&] {
      standOn(index);
      if (const auto handler = OnCellClick) handler();
    });
  });
  connect(this, &QTableView::doubleClicked, this, [this] { guarded(OnDblClick); });
  new GridMenu(*this, [this](const QModelIndex& index) { guarded([&] { standOn(index); }); });
}

DBGrid::~DBGrid() = default;

void DBGrid::setColumns(const QStringList& columns) {
  columns_ = columns;
  model_->setColumns(columns);
  rowsStale_ = true;
  markStale();
}

void DBGrid::SetFocus() {
  focusControl(*this);
}

void DBGrid::dataEvent(DataEvent event) {
  if (event == DataEvent::Rows) rowsStale_ = true;
  markStale();
}

void DBGrid::pull() {
  if (!dataset()) return;
  if (state() == QAbstractItemView::EditingState && !rowsStale_)
    return;  // the cell being typed in stays as it is
  if (std::exchange(rowsStale_, false)) {
    const int top = verticalScrollBar()->value();
    if (state() == QAbstractItemView::EditingState) reset();  // its row may be another now
    model_->reread();
    executeDelayedItemsLayout();  // a scroll bar that comes now takes its width before the columns are fitted
    verticalScrollBar()->setValue(top);
    fittedWidth_ = -1;
    if (dataset()->Active() && !dataset()->CountOn(0)) counting_.start(countingPause, this);
  }
  if (viewport()->width() != fittedWidth_) fitColumns();
  showCurrentRow();
  executeDelayedItemsLayout();  // now, and not after the first paint
  viewport()->update();
}

void DBGrid::timerEvent(QTimerEvent* event) {
  if (event->timerId() != counting_.timerId()) return QTableView::timerEvent(event);
  if (!guarded([this] { countOn(); })) counting_.stop();
}

// A grid that is hidden meanwhile, or whose rows are others by now, begins anew when it pulls them.
void DBGrid::countOn() {
  if (!isVisible()) {
    rowsStale_ = true;
    markStale();
  }
  if (!rowsStale_ && !dataset()->CountOn(countedRows)) return;
  counting_.stop();
  if (!rowsStale_) model_->setRows(int(dataset()->RecordsCounted()));
}

void DBGrid::showCurrentRow() {
  const int record = dataset()->Active() ? dataset()->RecordNumber() : -1;
  model_->setCurrent(record);
  if (record < 0 || record >= model_->rowCount()) return clearSelection();
  const int column = std::max(0, currentIndex().column());
  const QModelIndex cell = model_->index(record, column);
  selectionModel()->setCurrentIndex(cell, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
  scrollTo(cell);
}

void DBGrid::standOn(const QModelIndex& index) {
  sync();
  if (!dataset() || !dataset()->Active() || index.row() >= model_->rowCount()) return;
  if (dataset()->RecordNumber() != index.row()) dataset()->MoveTo(std::size_t(index.row()));
}

void DBGrid::deleteCurrentRow() {
  if (!dataset() || dataset()->Eof() || !ConfirmDeletion()) return;
  dataset()->Delete();
  sync();
}

void DBGrid::keyPressEvent(QKeyEvent* event) {
  if (!readOnly_ && event->key() == Qt::Key_Delete && event->modifiers() == Qt::ControlModifier) {
    guarded([this] { deleteCurrentRow(); });
    return event->accept();
  }
  const int rows = model_->rowCount();
  const int page = std::max(1, viewport()->height() / rowPixels - 1);
  const int from = model_->current();
  int to = from;
  switch (event->key()) {
    case Qt::Key_Up:
      to = from - 1;
      break;
    case Qt::Key_Down:
      to = from + 1;
      break;
    case Qt::Key_PageUp:
      to = from - page;
      break;
    case Qt::Key_PageDown:
      to = from + page;
      break;
    case Qt::Key_Home:
      to = 0;
      break;
    case Qt::Key_End:
      to = rows - 1;
      break;
    default:
      return QTableView::keyPressEvent(event);
  }
  event->accept();
  if (rows == 0) return;
  to = std::clamp(to, 0, rows - 1);
  guarded([&] {
    standOn(model_->index(to, std::max(0, currentIndex().column())));
    sync();
  });
}

void DBGrid::closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) {
  QTableView::closeEditor(editor, hint);
  markStale();
}

// As wide as the titles and the rows in sight. Where that is too much, titles take two lines, then the widest
// texts are cut, or with `wordWrap` broken between their words.
void DBGrid::fitColumns() {
  fittedWidth_ = viewport()->width();
  const int air = 2 * gridPadding(*this) + 1;  // letters begin and end within pixels
  QFont bold = font();
  bold.setBold(true);
  const QFontMetrics titles(bold), texts(font());
  const int first = std::max(0, rowAt(0));
  const int end = std::min(model_->rowCount(), first + viewport()->height() / rowPixels + 1);
  std::vector<ColumnWish> wishes;
  std::size_t rest = model_->shownColumns().size() - 1;
  for (const GridColumn& shown : model_->shownColumns()) {
    const int column = int(wishes.size());
    if (shown.wide) rest = wishes.size();
    int whole = 0, cut = 0;
    for (int row = first; row < end; ++row) {
      const QString text = model_->index(row, column).data().toString();
      const int width = texts.horizontalAdvance(text);
      whole = std::max(whole, width);
      const int unbroken = wordWrap() ? longestWord(text, texts) : width;
      const int enough = wordWrap() ? shortWord : shortText;
      cut = std::max(cut, shown.type == FieldType::Text ? std::min(unbroken, enough) : unbroken);
    }
    const int onOneLine = horizontalHeader()->sectionSizeHint(column);
    const int broken = wordWrap() ? longestWord(shown.title, titles) : shown.narrowestTitle(titles);
    whole = std::min(std::max(whole, shown.narrowestTitle(titles)) + air, std::max(widestFit, cut + air));
    wishes.push_back({std::max({shown.width, onOneLine, whole}), whole, std::max(cut, broken) + air});
  }
  std::vector<int> widths = tavoline::fitColumns(wishes, rest, fittedWidth_);
  if (wordWrap()) narrowBroken(widths, wishes, rest);
  int tallest = 0;
  const QSignalBlocker once(horizontalHeader());  // the grid would paint itself again for each column
  for (std::size_t column = 0; column < widths.size(); ++column) {
    const bool takesRest = horizontalHeader()->sectionResizeMode(int(column)) == QHeaderView::Stretch;
    if (!takesRest) setColumnWidth(int(column), widths[column]);  // else the headings are laid out once more
    const QRect room(0, 0, widths[column] - air + 1, viewport()->height());
    const QString title = model_->shownColumns()[column].title;
    tallest = std::max(tallest, titles.boundingRect(room, Qt::TextWordWrap, title).height());
  }
  horizontalHeader()->setFixedHeight(std::max(titlePixels, tallest + titleAir));
  horizontalHeader()->length();  // stretches the last column now, and not on a timer
  updateGeometries();
}

void DBGrid::resizeEvent(QResizeEvent* event) {
  QTableView::resizeEvent(event);
  if (!isVisible() || rowsStale_) return;
  if (viewport()->width() != fittedWidth_) fitColumns();  // at once, before they are painted at another width
  scrollTo(currentIndex());
}

}  // namespace tavoline
