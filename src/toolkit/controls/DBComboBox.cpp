#include "toolkit/controls/DBComboBox.h"

#include <QtGui/QKeyEvent>
#include <QtGui/QWheelEvent>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QStyledItemDelegate>

#include "toolkit/controls/Focus.h"
#include "toolkit/forms/Guard.h"

namespace tavoline {

DBComboBox::DBComboBox(QWidget* parent) : QComboBox(parent), TextBinding(this) {
  setEditable(true);
  setInsertPolicy(QComboBox::NoInsert);
  setCompleter(nullptr);
  setItemDelegate(new QStyledItemDelegate(this));
  connect(lineEdit(), &QLineEdit::textEdited, this, [this] { guarded([this] { changed(); }); });
  connect(this, &QComboBox::activated, this, [this] { guarded([this] { changed(); }); });
  setCurrentIndex(-1);
}

QStringList DBComboBox::items() const {
  QStringList texts;
  for (int i = 0; i < count(); ++i) texts << itemText(i);
  return texts;
}

void DBComboBox::setItems(const QStringList& texts) {
  const QString shown = currentText();
  clear();
  addItems(texts);
  showText(shown);
}

void DBComboBox::showText(const QString& text) {
  setCurrentIndex(findText(text, Qt::MatchExactly | Qt::MatchCaseSensitive));
  if (!isEditable()) return;
  const bool toBeTypedOver = window()->focusWidget() == this && lineEdit()->selectedText() == currentText();
  setEditText(text);
  if (toBeTypedOver) lineEdit()->selectAll();
}

void DBComboBox::changed() {
  textTyped();
  if (OnChange) OnChange();
}

std::string DBComboBox::Text() {
  return upToDateText().toStdString();
}

void DBComboBox::Text(std::string_view text) {
  if (text == Text()) return;
  writeText(QString::fromUtf8(text.data(), qsizetype(text.size())));
  if (OnChange) OnChange();
}

void DBComboBox::SetFocus() {
  focusControl(*this);
}

void DBComboBox::Red(bool on) {
  paintRed(*this, on);
}

QString DBComboBox::heldText() {
  guarded([this] { sync(); });
  return currentText();
}

void DBComboBox::enterText(const QString& text) {
  guarded([&] { Text(text.toStdString()); });
}

void DBComboBox::keyPressEvent(QKeyEvent* event) {
  if (!pathKey(*event, OnEnter, OnUp, OnDown)) QComboBox::keyPressEvent(event);
}

void DBComboBox::focusOutEvent(QFocusEvent* event) {
  QComboBox::focusOutEvent(event);
  if (leavesControl(*event)) guardedToTellAfter([this] { leave(); });
}

void DBComboBox::wheelEvent(QWheelEvent* event) {
  event->ignore();
}

}  // namespace tavoline
