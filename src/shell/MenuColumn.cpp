#include "shell/MenuColumn.h"

#include <QtCore/QEvent>
#include <QtGui/QPainter>
#include <QtWidgets/QLayout>
#include <QtWidgets/QStyleOptionButton>
#include <QtWidgets/QStylePainter>
#include <utility>

#include "toolkit/theme/Theme.h"

namespace tavoline {

namespace {

constexpr int unfoldedWidth = 252, foldedWidth = 64;  // pixels
constexpr int columnEdge = 6, groupEdge = 3;          // pixels at the sides
constexpr int foldedColumnEdge = 4, foldedGroupEdge = 1;
constexpr int barWidth = 4, barInset = 9, groundRadius = 8;  // of the mark

void setSides(QLayout* layout, int edge) {
  QMargins margins = layout->contentsMargins();
  margins.setLeft(edge);
  margins.setRight(edge);
  layout->setContentsMargins(margins);
}

}  // namespace

void MenuButton::Fold(bool folded) {
  folded_ = folded;
  setToolTip(folded ? text().trimmed() : QString());
  update();
}

void MenuButton::Here(bool here) {
  if (std::exchange(here_, here) != here) update();
}

QSize MenuButton::minimumSizeHint() const {
  return {iconSize().width() + 8, Button::minimumSizeHint().height()};
}

void MenuButton::paintEvent(QPaintEvent* event) {
  const bool onAccent = isEnabled() && property("kind") == QLatin1String("menuDoor");
  if (here_ && !onAccent) drawRounded(QRectF(rect()), theme().accentSoft, groundRadius);
  if (folded_)
    paintFolded();
  else
    Button::paintEvent(event);
  if (here_)
    drawRounded(QRectF(onAccent ? 3 : 0, barInset, barWidth, height() - 2 * barInset),
                onAccent ? theme().onAccent : theme().accent, barWidth / 2);
}

void MenuButton::drawRounded(const QRectF& place, QRgb colour, int radius) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(QColor(colour));
  painter.drawRoundedRect(place, radius, radius);
}

void MenuButton::paintFolded() {
  QStylePainter painter(this);
  QStyleOptionButton option;
  initStyleOption(&option);
  const QIcon picture = std::exchange(option.icon, {});
  option.text.clear();
  painter.drawControl(QStyle::CE_PushButton, option);
  QRect place(QPoint(), iconSize());
  place.moveCenter(rect().center());
  shownIcon(picture).paint(&painter, place, Qt::AlignCenter, isEnabled() ? QIcon::Normal : QIcon::Disabled);
}

void GroupTitle::Fold(bool folded) {
  folded_ = folded;
  update();
}

void GroupTitle::paintEvent(QPaintEvent* event) {
  if (!folded_) return QLabel::paintEvent(event);
  QPainter(this).fillRect(QRect(8, height() / 2, width() - 16, 1), palette().color(QPalette::Mid));
}

MenuColumn::MenuColumn(QWidget* parent) : QFrame(parent) {
  setFixedWidth(unfoldedWidth);
}

void MenuColumn::Mark(const QWidget* entry) {
  for (auto* button : findChildren<MenuButton*>()) button->Here(button == entry);
}

// A column that is only disabled with all around it, behind the login, is not in anybody's way.
void MenuColumn::changeEvent(QEvent* event) {
  QFrame::changeEvent(event);
  if (event->type() == QEvent::EnabledChange) fold(!isEnabledTo(parentWidget()));
}

void MenuColumn::fold(bool folded) {
  if (std::exchange(folded_, folded) == folded) return;
  setSides(layout(), folded ? foldedColumnEdge : columnEdge);
  for (auto* group : findChildren<QFrame*>(QString(), Qt::FindDirectChildrenOnly))
    if (group->layout()) setSides(group->layout(), folded ? foldedGroupEdge : groupEdge);
  for (auto* title : findChildren<GroupTitle*>()) title->Fold(folded);
  for (auto* button : findChildren<MenuButton*>()) button->Fold(folded);
  setFixedWidth(folded ? foldedWidth : unfoldedWidth);
}

}  // namespace tavoline
