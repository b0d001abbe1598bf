#pragma once

#include <QtWidgets/QTableView>
#include <functional>

namespace tavoline {

/// The actions of a grid as its menu, opened by the right button or a long press on a row, for that row.
/// Belongs to the grid.
class GridMenu : public QObject {
  Q_OBJECT

 public:
  /// `standOn` makes a row the current one; it runs before the menu opens and must not throw.
  GridMenu(QTableView& grid, std::function<void(const QModelIndex&)> standOn);

  /// The same menu for the row that is current, above or below a button. Nothing without a row.
  static void openAt(QTableView& grid, const QWidget& button);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void open(QPoint global);
  static void popUp(QTableView& grid, QPoint global);

  QTableView& grid_;
  QWidget* viewport_;
  std::function<void(const QModelIndex&)> standOn_;
};

}  // namespace tavoline
