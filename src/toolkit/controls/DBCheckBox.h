#pragma once

#include <QtWidgets/QCheckBox>
#include <functional>

#include "toolkit/controls/Binding.h"

namespace tavoline {

/// A check box on one field that holds one of two texts, or on none. Any value but the checked one shows
/// unticked.
class DBCheckBox : public QCheckBox, public Binding {
  Q_OBJECT
  Q_PROPERTY(QString dataSource READ dataSourceName WRITE setDataSourceName)
  Q_PROPERTY(QString dataField READ dataField WRITE setDataField)
  Q_PROPERTY(QString valueChecked MEMBER valueChecked_)
  Q_PROPERTY(QString valueUnchecked MEMBER valueUnchecked_)

 public:
  explicit DBCheckBox(QWidget* parent = nullptr);

  std::function<void()> OnClick;  ///< Ticked or unticked, by the user or by code.

  bool Checked();
  /// By code: a real change acts like a click, puts the dataset into edit state, writes the field, fires
  /// OnClick.
  void Checked(bool on);

 protected:
  void pull() override;

 private:
  void ticked(bool on);

  QString valueChecked_ = QStringLiteral("OUI");
  QString valueUnchecked_ = QStringLiteral("NON");
};

}  // namespace tavoline
