#pragma once

#include <QtCore/QBasicTimer>
#include <QtWidgets/QTableView>
#include <functional>
#include <memory>
#include <string>

#include "toolkit/controls/Binding.h"
#include "toolkit/controls/FingerScroll.h"

namespace tavoline {

class EmptyNote;

/// A grid over all visible rows of a dataset: striped, first page at once however long the table, the current
/// row in view. A click on a row makes its dataset stand there, then OnCellClick runs; cursor keys move it
/// too. That row is always the one highlighted. Only a visible grid asks its dataset for anything, and only
/// for the rows in sight; those of a long table are counted bit by bit behind them, and the scroll bar then
/// reaches to the last one.
///
/// `columns` holds one column a line, in order: "field=Title", then after "|" what applies of "right"
/// (numbers are right-aligned anyway), "money" (an amount: shown as "00.00", read and edited as it
/// stands), "wide" (takes what width is left; otherwise the last one does), "rw" (can be edited in place
/// unless the grid is read only) and a width in pixels, with commas between: "prix=Prix|money,rw,120".
/// Columns are as wide as their titles and the rows that were in sight, and have at least that width where
/// there is room. Where there is too little, titles take two lines, then texts are cut; figures never are,
/// they are drawn smaller at the last. With `wordWrap` a text too long for its cell goes on below. What is
/// typed in a cell is posted when its row is left; Ctrl+Delete deletes the current row of a grid that is not
/// read only, once confirmed, unless it `keepsRows`. The actions of a grid are its menu (see GridMenu).
///
/// In a grid that is not read only, a row that waits in insert state is the last one; where the grid
/// `holdsInserted`, neither a tap nor a key leaves it, and so stores it, for another row. Text that its field
/// refuses stays in the cell, to be mended or given up (Esc); typed text goes to the dataset as soon as that
/// asks for it.
///
/// A grid without a row shows its `emptyHint` in the middle, and below it a button that presses the one of
/// its screen that bears the name `emptyDoor`. Under a filter it says that nothing answers to it.
class DBGrid : public QTableView, public Binding {
  Q_OBJECT
  Q_PROPERTY(QString dataSource READ dataSourceName WRITE setDataSourceName)
  Q_PROPERTY(QStringList columns READ columns WRITE setColumns)
  Q_PROPERTY(bool readOnly READ readOnly WRITE setReadOnly)
  Q_PROPERTY(bool keepsRows MEMBER keepsRows_)
  Q_PROPERTY(bool holdsInserted MEMBER holdsInserted_)
  Q_PROPERTY(QString emptyHint MEMBER emptyHint_)
  Q_PROPERTY(QString emptyDoor MEMBER emptyDoor_)

 public:
  explicit DBGrid(QWidget* parent = nullptr);
  ~DBGrid() override;

  std::function<void()> OnCellClick;
  std::function<void()> OnDblClick;
  std::function<void(const std::string& field)> OnCellEnter;  ///< Enter ended the typing in a cell.
  /// The background of a cell, or an invalid colour for its own; `record` as Dataset::ValueAt counts.
  std::function<QColor(Dataset& rows, std::size_t record, const std::string& field)> OnCellColour;

  QStringList columns() const { return columns_; }
  void setColumns(const QStringList& columns);
  bool readOnly() const { return readOnly_; }
  void setReadOnly(bool readOnly) { readOnly_ = readOnly; }
  void SetFocus();
  /// Puts the caret into a cell of the current row, its text selected. Nothing where it cannot be typed in.
  void EditCell(std::string_view field);
  std::string SelectedField() const;  ///< Of the cell that was clicked last; empty for none.
  /// Scrolls to the first row whose field has this value and marks it for half a second, once the rows are
  /// shown as they are by then; after that the current row is in view again. The dataset does not move.
  void Mark(const std::string& field, const Value& value);

 protected:
  void pull() override;
  void dataEvent(DataEvent event) override;
  void giveUpPending() override;
  void dropPending() override;
  void keyPressEvent(QKeyEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index,
                                                       const QEvent* event) const override;
  void timerEvent(QTimerEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void commitData(QWidget* editor) override;
  void closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) override;

 private:
  class Model;
  class Fit;
  void standOn(const QModelIndex& index);
  void showCurrentRow();
  void readCurrentRow();
  void selectCurrentRow();
  void showMark();
  void showEmptiness();
  void deleteCurrentRow();
  void widenAtRest();
  void countOn();

  QStringList columns_;
  QString emptyHint_, emptyDoor_;
  bool readOnly_ = true, keepsRows_ = false, holdsInserted_ = false, rowsStale_ = true;
  bool refused_ = false;  // what was typed in the open cell
  Model* model_;
  std::unique_ptr<Fit> fit_;
  EmptyNote* note_ = nullptr;  // once the grid has been empty
  QBasicTimer counting_, resting_, marking_;
  std::string markField_;  // of the row to be marked; empty for none
  Value markValue_;
  FingerScroll fingers_;
};

}  // namespace tavoline
