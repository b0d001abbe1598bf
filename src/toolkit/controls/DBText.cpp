#include "toolkit/controls/DBText.h"

#include "toolkit/forms/Guard.h"

namespace tavoline {

DBText::DBText(QWidget* parent) : Label(parent), Binding(this) {}

std::string DBText::Caption() {
  return source() && !written_ ? fieldText() : Label::Caption();
}

void DBText::Caption(std::string_view text) {
  sync();
  Label::Caption(text);
  written_ = true;
}

void DBText::dataEvent(DataEvent event) {
  written_ = false;
  Binding::dataEvent(event);
}

void DBText::pull() {
  setText(QString::fromStdString(shown(displayValue())));
}

QString DBText::heldText() {
  guarded([this] { sync(); });
  return text();
}

}  // namespace tavoline
