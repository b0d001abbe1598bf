#pragma once

#include <QtWidgets/QComboBox>
#include <functional>
#include <string>
#include <string_view>

#include "toolkit/controls/TextBinding.h"

namespace tavoline {

/// A drop-down list of fixed texts on one field, or on none. Another text can be typed unless it is made read
/// only. Typed and chosen text waits as in DBEdit.
class DBComboBox : public QComboBox, public TextBinding {
  Q_OBJECT
  Q_PROPERTY(QString text READ heldText WRITE enterText)
  Q_PROPERTY(QString dataSource READ dataSourceName WRITE setDataSourceName)
  Q_PROPERTY(QString dataField READ dataField WRITE setDataField)
  Q_PROPERTY(QStringList items READ items WRITE setItems)

 public:
  explicit DBComboBox(QWidget* parent = nullptr);

  std::function<void()> OnChange;  ///< Chosen, typed, or changed by code.
  std::function<void()> OnEnter, OnUp, OnDown;

  std::string Text();
  void Text(std::string_view text);  ///< By code; as DBEdit::Text.
  void Clear() { Text(""); }
  void SetFocus();
  void Red(bool on);

  QStringList items() const;
  void setItems(const QStringList& items);

 protected:
  QString shownText() const override { return currentText(); }
  void showText(const QString& text) override;
  void keyPressEvent(QKeyEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;

 private:
  void changed();
  QString heldText();
  void enterText(const QString& text);
};

}  // namespace tavoline
