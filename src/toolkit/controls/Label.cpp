#include "toolkit/controls/Label.h"

#include <QtGui/QHelpEvent>
#include <QtGui/QMouseEvent>
#include <QtGui/QPainter>
#include <QtWidgets/QStyle>
#include <QtWidgets/QStyleOption>
#include <QtWidgets/QToolTip>
#include <algorithm>

#include "data/value/Figures.h"
#include "toolkit/controls/FittedText.h"
#include "toolkit/forms/Guard.h"

namespace tavoline {

Label::Label(QWidget* parent) : QLabel(parent) {
  setTextFormat(Qt::PlainText);
}

void Label::Click() {
  const auto handler = OnClick;
  if (handler) handler();
}

std::string Label::Caption() {
  return text().toStdString();
}

void Label::Caption(std::string_view text) {
  setText(QString::fromUtf8(text.data(), qsizetype(text.size())));
}

bool Label::event(QEvent* event) {
  if (event->type() == QEvent::ToolTip && toolTip().isEmpty() && elides()) {
    const bool cut = fontMetrics().horizontalAdvance(text().trimmed()) > roomForText();
    QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), cut ? text().trimmed() : QString(),
                       this);
    return true;
  }
  return QLabel::event(event);
}

void Label::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton && OnClick && rect().contains(event->position().toPoint())) {
    event->accept();
    guarded(OnClick);
    return;
  }
  QLabel::mouseReleaseEvent(event);
}

namespace {

constexpr int leastText = 48;        // pixels
constexpr double leastFigure = 0.6;  // of its usual width, where a layout must save room

int blanksWidth(const QLabel& label) {
  const QString text = label.text();
  const QFontMetrics metrics = label.fontMetrics();
  return metrics.horizontalAdvance(text) - metrics.horizontalAdvance(text.trimmed());
}

}  // namespace

QSize Label::sizeHint() const {
  return QLabel::sizeHint() - QSize(wordWrap() ? 0 : blanksWidth(*this), 0);
}

QSize Label::minimumSizeHint() const {
  const QSize hint = QLabel::minimumSizeHint() - QSize(wordWrap() ? 0 : blanksWidth(*this), 0);
  if (elides()) return {std::min(hint.width(), leastText), hint.height()};
  return shrinks() ? QSize(int(hint.width() * leastFigure), hint.height()) : hint;
}

int Label::roomForText() const {
  return contentsRect().width() - 2 * (margin() + qMax(indent(), 0));
}

bool Label::shrinks() const {
  return !wordWrap() && isFigure(text().toStdString());
}

void Label::paintEvent(QPaintEvent* event) {
  const bool plain = textFormat() == Qt::PlainText && !text().isEmpty();
  if (!plain || (text() == text().trimmed() && !shrinks() && !elides())) return QLabel::paintEvent(event);
  QPainter painter(this);
  if (shrinks()) {
    painter.setFont(fittedFont(text().trimmed(), font(), roomForText()));
  }
  drawFrame(&painter);
  drawCaption(painter);
}

void Label::drawCaption(QPainter& painter) {
  QStyleOption option;
  option.initFrom(this);
  const int edge = margin() + qMax(indent(), 0);
  const int flags =
      int(QStyle::visualAlignment(layoutDirection(), alignment())) | (wordWrap() ? Qt::TextWordWrap : 0);
  const QString shown = elides() ? painter.fontMetrics().elidedText(text().trimmed(), Qt::ElideRight,
                                                                    contentsRect().width() - 2 * edge)
                                 : text().trimmed();
  style()->drawItemText(&painter, contentsRect().adjusted(edge, margin(), -edge, -margin()), flags,
                        option.palette, isEnabled(), shown, foregroundRole());
}

}  // namespace tavoline
