#include "toolkit/controls/DBEdit.h"

#include "toolkit/forms/Guard.h"

namespace tavoline {

DBEdit::DBEdit(QWidget* parent) : Edit(parent), TextBinding(this) {}

std::string DBEdit::Text() {
  return upToDateText().toStdString();
}

void DBEdit::Text(std::string_view text) {
  if (text == Text()) return;
  const QString wanted = QString::fromUtf8(text.data(), qsizetype(text.size()));
  writeText(upperCase() ? wanted.toUpper() : wanted);
  if (OnChange) OnChange();
}

void DBEdit::showText(const QString& text) {
  setText(text);
}

void DBEdit::typed() {
  textTyped();
  Edit::typed();
}

void DBEdit::focusLeft() {
  leave();
  Edit::focusLeft();
}

QString DBEdit::heldText() {
  guarded([this] { sync(); });
  return text();
}

}  // namespace tavoline
