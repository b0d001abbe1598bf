#include <QtGui/QKeyEvent>
#include <QtGui/QWheelEvent>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QStyledItemDelegate>

#include "data/value/Errors.h"
#include "toolkit/controls/Focus.h"
#include "toolkit/controls/Lookup.h"
#include "toolkit/forms/Guard.h"

namespace tavoline {

DBLookupComboBox::DBLookupComboBox(QWidget* parent)
    : QComboBox(parent), Binding(this), rows_(new LookupRows(list_)), listener_([this](DataEvent event) {
        if (event != DataEvent::Rows) return;
        rowsStale_ = true;
        markStale();
      }) {
  rows_->setParent(this);
  setModel(rows_);
  setItemDelegate(new QStyledItemDelegate(this));  // the one that follows the theme's row height
  connect(this, &QComboBox::activated, this, [this](int row) { guarded([&] { chosen(std::size_t(row)); }); });
}

void DBLookupComboBox::bind() {
  listener_.listenTo(list_.listSource);
  Binding::bind();
  rowsStale_ = true;
  markStale();
}

void DBLookupComboBox::pull() {
  if (view()->isVisible()) {  // rows do not change under the finger
    afterPopup_ = true;
    return;
  }
  if (std::exchange(rowsStale_, false)) rows_->reread();
  const int row = list_.rowOf(source() ? displayValue() : key_);
  if (row != currentIndex()) setCurrentIndex(row);
}

Value DBLookupComboBox::KeyValue() {
  return source() ? fieldValue() : key_;
}

void DBLookupComboBox::KeyValue(const Value& key) {
  key_ = key;
  if (source()) {
    dataset()->Edit();
    dataset()->SetFieldValue(dataField().toStdString(), key);
  }
  markStale();
}

std::string DBLookupComboBox::Text() {
  const int row = list_.rowOf(KeyValue());
  return row < 0 ? std::string() : list_.text(std::size_t(row)).toStdString();
}

void DBLookupComboBox::chosen(std::size_t row) {
  const Value key = list_.key(row);
  list_.choose(row);
  KeyValue(key);
  if (OnChange) OnChange();
}

void DBLookupComboBox::Choose(const Value& key) {
  const int row = list_.rowOf(key);
  if (row < 0) throw DatasetError("« " + key.text() + " » n'est pas dans la liste. Actualisez la liste.");
  chosen(std::size_t(row));
}

QString DBLookupComboBox::heldText() {
  QString text;
  guarded([&] { text = QString::fromStdString(Text()); });
  return text;
}

void DBLookupComboBox::enterText(const QString& text) {
  guarded([&] {
    for (std::size_t row = 0; row < list_.count(); ++row) {
      if (list_.text(row) == text) return chosen(row);
    }
  });
}

void DBLookupComboBox::SetFocus() {
  focusControl(*this);
}

void DBLookupComboBox::Red(bool on) {
  paintRed(*this, on);
}

void DBLookupComboBox::showPopup() {
  if (guarded([this] { sync(); })) QComboBox::showPopup();
}

void DBLookupComboBox::hidePopup() {
  QComboBox::hidePopup();
  if (std::exchange(afterPopup_, false)) markStale();
}

void DBLookupComboBox::keyPressEvent(QKeyEvent* event) {
  if (!pathKey(*event, OnEnter, OnUp, OnDown)) QComboBox::keyPressEvent(event);
}

// A page scrolled by the wheel must not choose anything on its way.
void DBLookupComboBox::wheelEvent(QWheelEvent* event) {
  event->ignore();
}

}  // namespace tavoline
