#pragma once

#include <QtWidgets/QComboBox>
#include <QtWidgets/QListWidget>
#include <functional>

#include "toolkit/controls/Binding.h"

namespace tavoline {

/// The list half of a lookup: rows of `listSource`, the key in `keyField`, what is shown in `listFields`
/// (";" between names). Choosing makes the list's dataset stand on the chosen row; showing a value does not.
class LookupList {
 public:
  QString listSource, keyField, listFields;

  Dataset* dataset() const;
  std::size_t count() const;
  Value key(std::size_t row) const;
  QString text(std::size_t row) const;
  int rowOf(const Value& key) const;  ///< -1 if absent.
  void choose(std::size_t row) const;
};

/// A drop-down list of another dataset's rows, bound to a field or free (then it only holds a key).
class DBLookupComboBox : public QComboBox, public Binding {
  Q_OBJECT
  Q_PROPERTY(QString dataSource READ dataSourceName WRITE setDataSourceName)
  Q_PROPERTY(QString dataField READ dataField WRITE setDataField)
  Q_PROPERTY(QString listSource MEMBER listSource_)
  Q_PROPERTY(QString keyField MEMBER keyField_)
  Q_PROPERTY(QString listFields MEMBER listFields_)

 public:
  explicit DBLookupComboBox(QWidget* parent = nullptr);
  ~DBLookupComboBox() override;

  std::function<void()> OnChange;  ///< A choice in the list.
  std::function<void()> OnEnter, OnUp, OnDown;

  Value KeyValue();                 ///< Of the field if bound, else of the last choice; null for none.
  void KeyValue(const Value& key);  ///< By code; moves no dataset.
  std::string Text();               ///< What is shown for the key; empty for none.
  void SetFocus();
  void Red(bool on);
  /// Chooses the row with this key as a user does: moves the list's dataset, writes the field, fires
  /// OnChange.
  void Choose(const Value& key);

  void bind() override;

 protected:
  void pull() override;
  void showPopup() override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  struct ListListener;
  QString listSource_, keyField_, listFields_;
  Value key_;
  std::unique_ptr<ListListener> listListener_;
};

/// A list of another dataset's rows with one selected; free of any field.
class DBLookupListBox : public QListWidget, public Binding {
  Q_OBJECT
  Q_PROPERTY(QString listSource MEMBER listSource_)
  Q_PROPERTY(QString keyField MEMBER keyField_)
  Q_PROPERTY(QString listFields MEMBER listFields_)

 public:
  explicit DBLookupListBox(QWidget* parent = nullptr);
  ~DBLookupListBox() override;

  std::function<void()> OnClick;  ///< A row was chosen by click, touch or keyboard.

  Value KeyValue();  ///< Of the selected row; null for none.
  void KeyValue(const Value& key);
  void Choose(const Value& key);  ///< As a user does.

  void bind() override;

 protected:
  void pull() override;

 private:
  struct ListListener;
  QString listSource_, keyField_, listFields_;
  Value key_;
  std::unique_ptr<ListListener> listListener_;
};

}  // namespace tavoline
