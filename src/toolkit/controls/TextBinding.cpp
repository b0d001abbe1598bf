#include "toolkit/controls/TextBinding.h"

#include <QtWidgets/QWidget>

#include "data/value/Errors.h"

namespace tavoline {

namespace {
QString qt(const std::string& text) {
  return QString::fromStdString(text);
}
}  // namespace

void TextBinding::textTyped() {
  if (!dataset()) return;
  settle();
  if (waiting_) return;
  waiting_ = starting_ = true;
  try {
    dataset()->Edit();
    starting_ = false;
    before_ = displayValue();
  } catch (...) {
    waiting_ = starting_ = false;
    showText(qt(shown(displayValue())));
    throw;
  }
}

void TextBinding::writeText(const QString& text) {
  showText(text);
  if (!dataset()) return;
  waiting_ = false;
  try {
    dataset()->Edit();
    write(text);
  } catch (...) {
    markStale();
    throw;
  }
}

void TextBinding::write(const QString& text) {
  Dataset& rows = *dataset();
  const std::string field = dataField().toStdString();
  const int column = rows.ColumnIndex(field);
  const bool holdsText = column < 0 || rows.Columns()[std::size_t(column)].type == FieldType::Text;
  if (text.isEmpty() && self()->property("numberDue").toBool())
    throw ConversionError("Il manque un nombre : le champ « " + field +
                          " » est vide. Rien n'est enregistré.");
  rows.SetFieldValue(field, text.isEmpty() && !holdsText ? Value() : Value(text.toStdString()));
  givenText_ = text;
  givenValue_ = displayValue();
}

// Code that writes the field after the typing began has the last word.
void TextBinding::settle() {
  if (waiting_ && !starting_ && !(displayValue() == before_)) {
    waiting_ = false;
    markStale();
  }
}

void TextBinding::giveUpPending() {
  if (starting_ || Displaying::now()) return;
  settle();
  if (!waiting_) return;
  write(shownText());
  waiting_ = false;
}

void TextBinding::dropPending() {
  if (starting_) return;
  waiting_ = false;
  givenText_.clear();
  markStale();
}

void TextBinding::leave() {
  giveUpPending();
  givenText_.clear();
  markStale();
}

void TextBinding::pull() {
  settle();
  if (waiting_ || !dataset()) return;
  const Value value = displayValue();
  // While he types on, the user keeps his own way of writing the same value.
  if (self()->hasFocus() && !givenText_.isEmpty() && shownText() == givenText_ && value == givenValue_)
    return;
  const QString text = qt(shown(value));
  if (text != shownText()) showText(text);
}

QString TextBinding::upToDateText() {
  sync();
  return shownText();
}

}  // namespace tavoline
