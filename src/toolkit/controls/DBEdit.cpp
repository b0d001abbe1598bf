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
  const bool toBeTypedOver = window()->focusWidget() == this && selectedText() == this->text();
  setText(text);
  if (toBeTypedOver) selectAll();
}

void DBEdit::typed() {
  textTyped();
  Edit::typed();
}

void DBEdit::focusLeft() {
  leave();
  Edit::focusLeft();
}

// In a name or a comment it is a word that is mended.
bool DBEdit::typedOver() const {
  const int column = dataset() ? dataset()->ColumnIndex(dataField().toStdString()) : -1;
  return column >= 0 && dataset()->Columns()[std::size_t(column)].type != FieldType::Text;
}

QString DBEdit::heldText() {
  guarded([this] { sync(); });
  return text();
}

}  // namespace tavoline
