#include "toolkit/controls/DBText.h"

#include "toolkit/forms/Guard.h"

namespace tavoline {

DBText::DBText(QWidget* parent) : Label(parent), Binding(this) {}

std::string DBText::Caption() {
  return source() ? fieldText() : Label::Caption();
}

void DBText::pull() {
  setText(QString::fromStdString(shown(displayValue())));
}

QString DBText::heldText() {
  guarded([this] { sync(); });
  return text();
}

}  // namespace tavoline
