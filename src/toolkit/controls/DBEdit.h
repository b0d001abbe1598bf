#pragma once

#include "toolkit/controls/Binding.h"
#include "toolkit/controls/Edit.h"

namespace tavoline {

/// An input on one field. The first key puts the dataset into edit state; the typed text waits in the control and is
/// given up when the dataset asks for it, or when the focus leaves. Text that does not convert to the field throws.
class DBEdit : public Edit, public Binding {
  Q_OBJECT
  Q_PROPERTY(QString dataSource READ dataSourceName WRITE setDataSourceName)
  Q_PROPERTY(QString dataField READ dataField WRITE setDataField)

 public:
  explicit DBEdit(QWidget* parent = nullptr);
  using Edit::Text;
  std::string Text() override;
  /// By code: as if typed, and given up at once (the dataset must be in, or goes into, edit state).
  void Text(std::string_view text) override;

 protected:
  void pull() override;
  void typed() override;
  void focusOutEvent(QFocusEvent* event) override;
  void giveUpPending() override;
  void dropPending() override;

 private:
  bool waiting_ = false;  // typed text not yet in the dataset
};

}  // namespace tavoline
