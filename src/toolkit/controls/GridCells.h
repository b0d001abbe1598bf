#pragma once

#include <QtWidgets/QStyledItemDelegate>

namespace tavoline {

/// Pixels of the letters of a grid that has no other way to show all of its columns.
constexpr int crowdedLetters = 10;

/// Pixels on either side of a cell's text, in a grid that may be `dense`, or whose `letters` are smaller.
int gridPadding(const QWidget& grid);

/// By which a cell tells whether it holds a figure.
constexpr int FigureRole = Qt::UserRole;

/// Draws the cells of a grid. A colour of their own goes before the selection, so that a mark stays seen on
/// the current row. In a grid with `wordWrap`, a text too long for its cell goes on below, in smaller letters
/// where it must. A figure is drawn as small as it must to be whole.
class GridCells : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;
  /// As the cell is aligned, so that a number does not jump when it is typed.
  QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                        const QModelIndex& index) const override;
  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};

}  // namespace tavoline
