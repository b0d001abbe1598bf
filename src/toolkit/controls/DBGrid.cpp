#include "toolkit/controls/DBGrid.h"

#include <QtCore/QTimerEvent>
#include <QtGui/QGuiApplication>
#include <QtGui/QKeyEvent>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QScrollBar>
#include <algorithm>

#include "toolkit/controls/EmptyNote.h"
#include "toolkit/controls/Focus.h"
#include "toolkit/controls/GridCells.h"
#include "toolkit/controls/GridFit.h"
#include "toolkit/controls/GridMenu.h"
#include "toolkit/controls/GridModel.h"
#include "toolkit/forms/Guard.h"
#include "toolkit/forms/Messages.h"
#include "toolkit/forms/TForm.h"

namespace tavoline {

namespace {

constexpr int rowPixels = 48;        // pixels: a finger's width
constexpr int narrowestColumn = 16;  // pixels: its own measure grows with the letters of the titles
constexpr int countingPause = 5;     // ms between two steps of counting, for whatever else is to be done
constexpr int restingPause = 120;    // ms without a movement before columns are widened
constexpr int markTime = 500;        // ms
constexpr std::size_t countedRows = 32768;  // in one step: a few ms

}  // namespace

DBGrid::DBGrid(QWidget* parent)
    : QTableView(parent),
      Binding(this),
      model_(new Model(*this)),
      fit_(std::make_unique<Fit>(*this)),
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
  setAutoScroll(false);  // to the current row by showCurrentRow alone
  setTabKeyNavigation(false);
  setCornerButtonEnabled(false);
  verticalHeader()->hide();
  verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  verticalHeader()->setMinimumSectionSize(rowPixels);
  verticalHeader()->setDefaultSectionSize(rowPixels);
  horizontalHeader()->setStretchLastSection(true);
  horizontalHeader()->setMinimumSectionSize(narrowestColumn);
  horizontalHeader()->setHighlightSections(false);
  horizontalHeader()->setSectionsClickable(false);
  connect(this, &QTableView::clicked, this, [this](const QModelIndex& index) {
    guarded([&] {
      standOn(index);
      if (const auto handler = OnCellClick) handler();
    });
  });
  connect(this, &QTableView::doubleClicked, this, [this] { guarded(OnDblClick); });
  connect(verticalScrollBar(), &QScrollBar::valueChanged, this,
          [this] { resting_.start(restingPause, this); });
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
    fit_->forget();
    if (dataset()->Active() && !dataset()->CountOn(0)) counting_.start(countingPause, this);
  }
  fit_->now();
  markField_.empty() ? showCurrentRow() : showMark();
  fit_->now();                  // the current row may have brought others into sight
  executeDelayedItemsLayout();  // now, and not after the first paint
  if (note_ || model_->rowCount() == 0) showEmptiness();
  viewport()->update();
}

void DBGrid::showEmptiness() {
  if (emptyHint_.isEmpty() || !dataset()->Active() || model_->rowCount() > 0) {
    if (note_) note_->hide();
    return;
  }
  if (!note_) note_ = new EmptyNote(this);
  QWidget* screen = this;
  while (screen && !qobject_cast<TForm*>(screen)) screen = screen->parentWidget();
  if (dataset()->Narrowed())
    note_->Tell(QStringLiteral("Aucune ligne ne répond aux filtres."), nullptr);
  else
    note_->Tell(emptyHint_,
                screen && !emptyDoor_.isEmpty() ? screen->findChild<Button*>(emptyDoor_) : nullptr);
}

void DBGrid::timerEvent(QTimerEvent* event) {
  if (event->timerId() == resting_.timerId()) return widenAtRest();
  if (event->timerId() == marking_.timerId()) {
    marking_.stop();
    model_->setMarked(-1);
    return markStale();  // back to the current row
  }
  if (event->timerId() != counting_.timerId()) return QTableView::timerEvent(event);
  if (!guarded([this] { countOn(); })) counting_.stop();
}

// A column that grew under a finger would take the row from it.
void DBGrid::widenAtRest() {
  if (fingers_.busy() || QGuiApplication::mouseButtons() != Qt::NoButton) return;
  resting_.stop();
  if (isVisible() && !rowsStale_) guarded([this] { fit_->now(); });
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
  readCurrentRow();
  selectCurrentRow();
  if (model_->current() >= 0) scrollTo(currentIndex());
}

void DBGrid::readCurrentRow() {
  const bool inserting = !readOnly_ && dataset()->State() == DatasetState::Insert;
  model_->showInserted(inserting);
  const int record = inserting             ? model_->rowCount() - 1
                     : dataset()->Active() ? dataset()->RecordNumber()
                                           : -1;
  model_->setCurrent(record);
}

void DBGrid::selectCurrentRow() {
  const int record = model_->current();
  if (record < 0 || record >= model_->rowCount()) return clearSelection();
  const int column = std::max(0, currentIndex().column());
  selectionModel()->setCurrentIndex(model_->index(record, column),
                                    QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
}

void DBGrid::Mark(const std::string& field, const Value& value) {
  markField_ = field;
  markValue_ = value;
  markStale();
}

void DBGrid::showMark() {
  const std::string field = std::exchange(markField_, {});
  readCurrentRow();
  selectCurrentRow();
  const int row = dataset()->Active() ? dataset()->RecordOf(field, markValue_) : -1;
  if (row < 0 || row >= model_->rowCount()) return;
  scrollTo(model_->index(row, 0));
  model_->setMarked(row);
  marking_.start(markTime, this);
}

/// A press on a row shows it as the current one; let go of elsewhere, it was none.
void DBGrid::mouseReleaseEvent(QMouseEvent* event) {
  QTableView::mouseReleaseEvent(event);
  selectCurrentRow();
}

QItemSelectionModel::SelectionFlags DBGrid::selectionCommand(const QModelIndex& index, const QEvent*) const {
  if (!index.isValid()) return QItemSelectionModel::NoUpdate;
  return QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows;
}

void DBGrid::standOn(const QModelIndex& index) {
  sync();
  if (!dataset() || !dataset()->Active() || index.row() >= model_->rowCount()) return;
  if (model_->isInserted(index.row())) return;
  if (holdsInserted_ && dataset()->State() == DatasetState::Insert) return;
  if (dataset()->RecordNumber() != index.row()) dataset()->MoveTo(std::size_t(index.row()));
  model_->setCurrent(index.row());
}

void DBGrid::deleteCurrentRow() {
  if (!dataset() || dataset()->Eof() || !ConfirmDeletion()) return;
  dataset()->Delete();
  sync();
}

void DBGrid::keyPressEvent(QKeyEvent* event) {
  if (!readOnly_ && !keepsRows_ && event->key() == Qt::Key_Delete &&
      event->modifiers() == Qt::ControlModifier) {
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

void DBGrid::resizeEvent(QResizeEvent* event) {
  QTableView::resizeEvent(event);
  if (!isVisible() || rowsStale_) return;
  fit_->now();  // at once, before they are painted at another width
  if (note_) showEmptiness();
  scrollTo(currentIndex());
}

}  // namespace tavoline
