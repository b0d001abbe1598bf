#include "toolkit/controls/DBCheckBox.h"

#include "toolkit/forms/Guard.h"

namespace tavoline {

DBCheckBox::DBCheckBox(QWidget* parent) : QCheckBox(parent), Binding(this) {
  connect(this, &QCheckBox::clicked, this, [this](bool on) { guarded([&] { ticked(on); }); });
}

void DBCheckBox::pull() {
  if (source()) setChecked(displayValue().text() == valueChecked_.toStdString());
}

bool DBCheckBox::Checked() {
  sync();
  return isChecked();
}

void DBCheckBox::Checked(bool on) {
  if (on == Checked()) return;
  setChecked(on);
  ticked(on);
}

void DBCheckBox::ticked(bool on) {
  if (source()) {
    markStale();  // whatever the dataset makes of it is what will be shown
    dataset()->Edit();
    dataset()->SetFieldValue(dataField().toStdString(), (on ? valueChecked_ : valueUnchecked_).toStdString());
  }
  if (OnClick) OnClick();
}

}  // namespace tavoline
