#include "toolkit/forms/Names.h"

#include <QtCore/QRegularExpression>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QAbstractScrollArea>
#include <QtWidgets/QAbstractSpinBox>
#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QGridLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPlainTextEdit>

namespace tavoline {

namespace {

// What can be said, and is not a mark only.
const QRegularExpression& word() {
  static const QRegularExpression letters(QStringLiteral("[\\p{L}\\p{N}]"));
  return letters;
}

bool isPart(const QWidget& control) {
  const QWidget* owner = control.parentWidget();
  return qobject_cast<const QComboBox*>(owner) || qobject_cast<const QAbstractSpinBox*>(owner) ||
         qobject_cast<const QAbstractItemView*>(owner);
}

bool isTypedIn(const QWidget& control) {
  return qobject_cast<const QLineEdit*>(&control) || qobject_cast<const QComboBox*>(&control) ||
         qobject_cast<const QAbstractSpinBox*>(&control) || qobject_cast<const QPlainTextEdit*>(&control);
}

// The words of a label that names something: not one that shows a field, nor a mark that nobody sees.
QString wordsOf(const QLayoutItem* item) {
  const auto* label = item ? qobject_cast<const QLabel*>(item->widget()) : nullptr;
  if (!label || label->isHidden() || label->property("dataField").isValid()) return {};
  return label->text().simplified();
}

QString besideInGrid(const QGridLayout& grid, int index) {
  int row = 0, column = 0, rows = 0, columns = 0;
  grid.getItemPosition(index, &row, &column, &rows, &columns);
  for (int left = column - 1; left >= 0; --left) {
    if (QString words = wordsOf(grid.itemAtPosition(row, left)); !words.isEmpty()) return words;
  }
  return row > 0 ? wordsOf(grid.itemAtPosition(row - 1, column)) : QString();
}

QString beforeInLine(const QLayout& line, int index) {
  for (int at = index - 1; at >= 0; --at) {
    if (QString words = wordsOf(line.itemAt(at)); !words.isEmpty()) return words;
  }
  return {};
}

// Up from the layout in which the control lies, until a label stands before it.
QString labelOf(const QLayout& layout, const QWidget& control) {
  for (int index = 0; index < layout.count(); ++index) {
    const QLayoutItem* item = layout.itemAt(index);
    QString words;
    if (item->widget() == &control) {
      words = QStringLiteral(" ");
    } else if (const QLayout* inner = layout.itemAt(index)->layout()) {
      words = labelOf(*inner, control);
    }
    if (words.isEmpty()) continue;
    if (words != QLatin1String(" ")) return words;
    const auto* grid = qobject_cast<const QGridLayout*>(&layout);
    const QString found = grid ? besideInGrid(*grid, index) : beforeInLine(layout, index);
    return found.isEmpty() ? words : found;
  }
  return {};
}

}  // namespace

void nameControls(QWidget& screen) {
  for (QWidget* control : screen.findChildren<QWidget*>()) {
    if (!control->accessibleName().isEmpty() || isPart(*control)) continue;
    const QWidget* owner = control->parentWidget();
    QString name;
    if (isTypedIn(*control) && owner->layout()) name = labelOf(*owner->layout(), *control).trimmed();
    if (qobject_cast<const QAbstractScrollArea*>(control) && !isTypedIn(*control))
      name = screen.windowTitle().trimmed();
    const auto* button = qobject_cast<const QAbstractButton*>(control);
    const bool saysItself = button && button->text().contains(word());
    if (name.isEmpty() && !saysItself) name = control->toolTip();
    if (!name.isEmpty()) control->setAccessibleName(name);
  }
}

}  // namespace tavoline
