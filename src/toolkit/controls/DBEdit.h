#pragma once

#include "toolkit/controls/Edit.h"
#include "toolkit/controls/TextBinding.h"

namespace tavoline {

/// An input on one field. The first key puts the dataset into edit state; the typed text waits in the control
/// and is given up when the dataset asks for it, or when the focus leaves. Text that does not convert to the
/// field throws and goes on waiting. An input with the
/// property `numberDue` takes no empty text: handlers compute with it. A tap on a number selects it, to be
/// typed over. A plain input as long as it has no data source.
class DBEdit : public Edit, public TextBinding {
  Q_OBJECT
  Q_PROPERTY(QString dataSource READ dataSourceName WRITE setDataSourceName)
  Q_PROPERTY(QString dataField READ dataField WRITE setDataField)
  Q_PROPERTY(bool money READ money WRITE setMoney)

 public:
  explicit DBEdit(QWidget* parent = nullptr);
  std::string Text() override;
  /// By code: as if typed, and given up at once (the dataset must be in, or goes into, edit state).
  void Text(std::string_view text) override;

 protected:
  QString shownText() const override { return text(); }
  void showText(const QString& text) override;
  void typed() override;
  void focusLeft() override;
  QString heldText() override;
  bool typedOver() const override;
};

}  // namespace tavoline
