#pragma once

#include "toolkit/controls/Binding.h"
#include "toolkit/controls/Label.h"

namespace tavoline {

/// A text showing one field of the current row: empty for null, and for no row. Caption() asks the dataset at
/// that moment, whether the control is visible or not.
class DBText : public Label, public Binding {
  Q_OBJECT
  Q_PROPERTY(QString dataSource READ dataSourceName WRITE setDataSourceName)
  Q_PROPERTY(QString dataField READ dataField WRITE setDataField)
  Q_PROPERTY(bool money READ money WRITE setMoney)

 public:
  explicit DBText(QWidget* parent = nullptr);
  std::string Caption() override;
  /// A text in the place of the field's, until the dataset tells of anything: another row, a refresh, a
  /// closing.
  void Caption(std::string_view text) override;

 protected:
  void pull() override;
  void dataEvent(DataEvent event) override;
  QString heldText() override;
  bool ofAnyLength() const override { return true; }

 private:
  bool written_ = false;
};

}  // namespace tavoline
