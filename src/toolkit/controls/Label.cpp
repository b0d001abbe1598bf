#include "toolkit/controls/Label.h"

#include <QtGui/QMouseEvent>
#include <QtGui/QPainter>
#include <QtWidgets/QStyle>
#include <QtWidgets/QStyleOption>

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

void Label::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton && OnClick && rect().contains(event->position().toPoint())) {
    event->accept();
    guarded(OnClick);
    return;
  }
  QLabel::mouseReleaseEvent(event);
}

namespace {

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
  return shrinks() ? QSize(int(hint.width() * leastFigure), hint.height()) : hint;
}

bool Label::shrinks() const {
  return !wordWrap() && isFigure(text().toStdString());
}

void Label::paintEvent(QPaintEvent* event) {
  const bool plain = textFormat() == Qt::PlainText && !text().isEmpty();
  if (!plain || (text() == text().trimmed() && !shrinks())) return QLabel::paintEvent(event);
  QPainter painter(this);
  if (shrinks()) {
    const int edge = margin() + qMax(indent(), 0);
    painter.setFont(fittedFont(text().trimmed(), font(), contentsRect().width() - 2 * edge));
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
  style()->drawItemText(&painter, contentsRect().adjusted(edge, margin(), -edge, -margin()), flags,
                        option.palette, isEnabled(), text().trimmed(), foregroundRole());
}

}  // namespace tavoline
