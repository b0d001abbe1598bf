#include "toolkit/controls/GridCells.h"

#include <QtGui/QPainter>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QTableView>

#include "toolkit/controls/FittedText.h"
#include "toolkit/theme/Theme.h"

namespace tavoline {

namespace {

constexpr int smallestCellLetters = 13;  // pixels
constexpr int smallestFigures = 6;       // the same where nothing may be cut

FittedText cellText(const QModelIndex& index, const QStyleOptionViewItem& option, QSize room, bool wrapped) {
  const QString text = index.data().toString();
  const QFontMetrics& metrics = option.fontMetrics;
  if (metrics.horizontalAdvance(text) <= room.width()) return {{text}, option.font, metrics.height()};
  if (index.data(FigureRole).toBool()) return fitText(text, option.font, room, smallestFigures);
  if (wrapped) return fitText(text, option.font, room, smallestCellLetters);
  return {{metrics.elidedText(text, Qt::ElideRight, room.width())}, option.font, metrics.height()};
}

}  // namespace

int gridPadding(const QWidget& grid) {
  if (const int letters = grid.property("letters").toInt()) return letters > crowdedLetters ? 4 : 3;
  return grid.property("dense").toBool() ? 7 : 12;
}

QWidget* GridCells::createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                                 const QModelIndex& index) const {
  QWidget* editor = QStyledItemDelegate::createEditor(parent, option, index);
  if (auto* line = qobject_cast<QLineEdit*>(editor))
    line->setAlignment(Qt::Alignment(index.data(Qt::TextAlignmentRole).toInt()));
  return editor;
}

void GridCells::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
  const QVariant own = index.data(Qt::BackgroundRole);
  const QColor colour = own.isValid() ? own.value<QColor>() : QColor();
  const bool selected = option.state.testFlag(QStyle::State_Selected);
  if (colour.isValid())
    painter->fillRect(option.rect, colour);
  else if (selected)
    painter->fillRect(option.rect, option.palette.highlight());

  const QPalette::ColorRole ink = selected ? QPalette::HighlightedText : QPalette::Text;
  painter->setPen(colour.isValid() ? lettersOn(colour) : option.palette.color(ink));
  const auto* grid = static_cast<const QTableView*>(option.widget);
  const int padding = gridPadding(*grid);
  const QRect room = option.rect.adjusted(padding, 0, -padding, 0);
  QStyleOptionViewItem written = option;
  if (const int letters = grid->property("letters").toInt()) {
    written.font.setPixelSize(letters);
    written.fontMetrics = QFontMetrics(written.font);
  }
  const FittedText fitted = cellText(index, written, room.size(), grid->wordWrap());
  painter->setFont(fitted.font);
  QRect line(room.left(), room.center().y() - int(fitted.lines.size()) * fitted.lineHeight / 2 + 1,
             room.width(), fitted.lineHeight);
  const int alignment = index.data(Qt::TextAlignmentRole).toInt() | Qt::TextSingleLine;
  for (const QString& text : fitted.lines) {
    painter->drawText(line, alignment, text);
    line.translate(0, fitted.lineHeight);
  }
}

}  // namespace tavoline
