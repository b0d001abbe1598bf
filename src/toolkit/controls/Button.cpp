#include "toolkit/controls/Button.h"

#include <QtGui/QMouseEvent>
#include <QtWidgets/QStyleOptionButton>
#include <QtWidgets/QStylePainter>

#include "toolkit/controls/Focus.h"
#include "toolkit/forms/Guard.h"
#include "toolkit/theme/Theme.h"

namespace tavoline {

namespace {

// The icons are drawn in ink; on the accent colour they take the colour of the text.
QIcon tinted(const QIcon& icon, QSize size, qreal ratio, const QColor& colour) {
  QPixmap picture = icon.pixmap(size, ratio);
  QPainter painter(&picture);
  painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
  painter.fillRect(QRect(QPoint(), size), colour);
  painter.end();
  return picture;
}

}  // namespace

Button::Button(QWidget* parent) : QPushButton(parent) {
  setAutoDefault(true);  // Return presses it as well as the space bar
  connect(this, &QPushButton::clicked, this, [this] { guarded(OnClick); });
}

void Button::Click() {
  const auto handler = OnClick;
  if (handler) handler();
}

std::string Button::Caption() const {
  return text().toStdString();
}

void Button::Caption(std::string_view text) {
  setText(QString::fromUtf8(text.data(), qsizetype(text.size())));
}

void Button::SetFocus() {
  focusControl(*this);
}

void Button::paintEvent(QPaintEvent*) {
  QStylePainter painter(this);
  QStyleOptionButton option;
  initStyleOption(&option);
  option.text = option.text.trimmed();
  option.icon = shownIcon(option.icon);
  painter.drawControl(QStyle::CE_PushButton, option);
}

QIcon Button::shownIcon(const QIcon& icon) const {
  const QString kind = property("kind").toString();
  const bool onBar = kind == QLatin1String("onBar");
  const bool onAccent = kind == QLatin1String("primary") || kind == QLatin1String("menuDoor");
  if (icon.isNull() || !isEnabled() || !(onAccent || onBar)) return icon;
  return tinted(icon, iconSize(), devicePixelRatioF(), QColor(onBar ? theme().onBar : theme().onAccent));
}

QSize Button::withoutBlanks(QSize size) const {
  const QFontMetrics metrics = fontMetrics();
  size.rwidth() -= metrics.horizontalAdvance(text()) - metrics.horizontalAdvance(text().trimmed());
  return size;
}

QSize Button::sizeHint() const {
  return withoutBlanks(QPushButton::sizeHint());
}

QSize Button::minimumSizeHint() const {
  return withoutBlanks(QPushButton::minimumSizeHint());
}

void Button::mouseReleaseEvent(QMouseEvent* event) {
  if (OnMouseUp && event->button() == Qt::LeftButton && rect().contains(event->position().toPoint())) {
    guarded(OnMouseUp);
  }
  QPushButton::mouseReleaseEvent(event);
}

void Button::leaveEvent(QEvent* event) {
  QPushButton::leaveEvent(event);
  guarded(OnMouseLeave);
}

}  // namespace tavoline
