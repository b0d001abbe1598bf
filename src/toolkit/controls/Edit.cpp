#include "toolkit/controls/Edit.h"

#include <QtGui/QFocusEvent>
#include <QtGui/QFontInfo>
#include <QtGui/QMouseEvent>
#include <QtGui/QValidator>
#include <utility>

#include "toolkit/controls/Focus.h"
#include "toolkit/forms/Guard.h"

namespace tavoline {

namespace {

class UpperCase : public QValidator {
 public:
  using QValidator::QValidator;
  State validate(QString& input, int&) const override {
    input = input.toUpper();
    return Acceptable;
  }
};

}  // namespace

Edit::Edit(QWidget* parent) : QLineEdit(parent) {
  connect(this, &QLineEdit::textEdited, this, [this] { guarded([this] { typed(); }); });
  connect(this, &QLineEdit::textChanged, this, [this] { fitLetters(); });
}

std::string Edit::Text() {
  return text().toStdString();
}

void Edit::Text(std::string_view text) {
  QString wanted = QString::fromUtf8(text.data(), qsizetype(text.size()));
  if (upperCase_) wanted = wanted.toUpper();
  if (wanted == this->text()) return;
  setText(wanted);
  if (OnChange) OnChange();
}

void Edit::enterText(const QString& text) {
  guarded([&] { Text(text.toStdString()); });
}

void Edit::SetFocus() {
  focusControl(*this);
}

void Edit::Red(bool on) {
  paintRed(*this, on);
}

void Edit::setUpperCase(bool on) {
  upperCase_ = on;
  setValidator(on ? new UpperCase(this) : nullptr);
}

void Edit::typed() {
  if (OnChange) OnChange();
}

void Edit::focusLeft() {
  if (OnExit) OnExit();
}

// The letters of a style sheet give way to nothing but another one.
void Edit::fitLetters() {
  if (fitting_ || !(alignment() & Qt::AlignRight) || !isVisible()) return;
  constexpr int kSmallest = 9, kBesideText = 26;  // pixels; borders, padding and the caret
  if (letters_ == 0) {
    if (fontMetrics().horizontalAdvance(text()) <= width() - kBesideText) return;
    letters_ = QFontInfo(font()).pixelSize();
  }
  QFont fitted = font();
  int pixels = letters_;
  for (; pixels > kSmallest; --pixels) {
    fitted.setPixelSize(pixels);
    if (QFontMetrics(fitted).horizontalAdvance(text()) <= width() - kBesideText) break;
  }
  const QString style = pixels < letters_ ? QStringLiteral("font-size: %1px").arg(pixels) : QString();
  if (style == styleSheet()) return;
  fitting_ = true;
  setStyleSheet(style);
  fitting_ = false;
}

void Edit::resizeEvent(QResizeEvent* event) {
  QLineEdit::resizeEvent(event);
  fitLetters();
}

void Edit::keyPressEvent(QKeyEvent* event) {
  touched_ = true;
  if (pathKey(*event, OnEnter, OnUp, OnDown) || pressesDefault(*event, *this)) return;
  QLineEdit::keyPressEvent(event);
}

void Edit::mouseReleaseEvent(QMouseEvent* event) {
  QLineEdit::mouseReleaseEvent(event);
  if (!std::exchange(touched_, true) && typedOver() && !hasSelectedText()) selectAll();
}

void Edit::focusInEvent(QFocusEvent* event) {
  QLineEdit::focusInEvent(event);
  if (event->reason() != Qt::PopupFocusReason) touched_ = false;
}

void Edit::focusOutEvent(QFocusEvent* event) {
  QLineEdit::focusOutEvent(event);
  if (leavesControl(*event)) guardedToTellAfter([this] { focusLeft(); });
}

}  // namespace tavoline
