#pragma once

#include <QtWidgets/QComboBox>
#include <QtWidgets/QListWidget>
#include <functional>
#include <string>

#include "toolkit/controls/Binding.h"
#include "toolkit/controls/FingerScroll.h"
#include "toolkit/controls/LookupList.h"

namespace tavoline {

/// A drop-down list of another dataset's rows, bound to a field or free (then it only holds a key).
class DBLookupComboBox : public QComboBox, public Binding {
  Q_OBJECT
  Q_PROPERTY(QString text READ heldText WRITE enterText)
  Q_PROPERTY(QString dataSource READ dataSourceName WRITE setDataSourceName)
  Q_PROPERTY(QString dataField READ dataField WRITE setDataField)
  Q_PROPERTY(QString listSource READ listSource WRITE setListSource)
  Q_PROPERTY(QString keyField READ keyField WRITE setKeyField)
  Q_PROPERTY(QString listFields READ listFields WRITE setListFields)

 public:
  explicit DBLookupComboBox(QWidget* parent = nullptr);

  std::function<void()> OnChange;  ///< A choice in the list.
  std::function<void()> OnEnter, OnUp, OnDown;

  Value KeyValue();                 ///< Of the field if bound, else of the last choice; null for none.
  void KeyValue(const Value& key);  ///< By code; writes a bound field, moves no dataset, fires nothing.
  std::string Text();  ///< What is shown for the key; empty for none, and for a key that the list lacks.
  void SetFocus();
  void Red(bool on);
  /// Chooses the row with this key as a user does: moves the list's dataset, writes the field, fires
  /// OnChange. Throws DatasetError for a key that the list lacks.
  void Choose(const Value& key);

  QString listSource() const { return list_.listSource; }
  void setListSource(const QString& name) { list_.listSource = name; }
  QString keyField() const { return list_.keyField; }
  void setKeyField(const QString& field) { list_.keyField = field; }
  QString listFields() const { return list_.listFields; }
  void setListFields(const QString& fields) { list_.listFields = fields; }

  void bind() override;
  void showPopup() override;
  void hidePopup() override;

 protected:
  void pull() override;
  void keyPressEvent(QKeyEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;

 private:
  void chosen(std::size_t row);
  QString heldText();
  void enterText(const QString& text);

  LookupList list_;
  LookupRows* rows_;
  Value key_;
  bool rowsStale_ = true, afterPopup_ = false;
  RowsListener listener_;
};

/// A list of another dataset's rows with one selected; free of any field. The selection stays on its key,
/// whatever becomes of the rows around it.
class DBLookupListBox : public QListWidget, public Binding {
  Q_OBJECT
  Q_PROPERTY(QString text READ heldText WRITE enterText)
  Q_PROPERTY(QString listSource READ listSource WRITE setListSource)
  Q_PROPERTY(QString keyField READ keyField WRITE setKeyField)
  Q_PROPERTY(QString listFields READ listFields WRITE setListFields)

 public:
  explicit DBLookupListBox(QWidget* parent = nullptr);

  std::function<void()> OnClick;                        ///< A row was chosen by click, touch or keyboard.
  std::function<std::string(const Value& key)> OnNote;  ///< A few quiet words beneath the text of a row.
  void NotesChanged() { markStale(); }                  ///< Asks OnNote again for every row.

  Value KeyValue();                 ///< Of the selected row; null for none, and when the row has gone.
  void KeyValue(const Value& key);  ///< By code; moves no dataset, fires nothing.
  void Choose(const Value& key);    ///< As a user does. Throws DatasetError for a key that the list lacks.
  void SetFocus();

  QString listSource() const { return list_.listSource; }
  void setListSource(const QString& name) { list_.listSource = name; }
  QString keyField() const { return list_.keyField; }
  void setKeyField(const QString& field) { list_.keyField = field; }
  QString listFields() const { return list_.listFields; }
  void setListFields(const QString& fields) { list_.listFields = fields; }

  void bind() override;

 protected:
  void pull() override;
  void dataEvent(DataEvent event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void chosen(std::size_t row);
  QString heldText();
  void enterText(const QString& text);

  LookupList list_;
  Value key_;
  FingerScroll fingers_;
};

}  // namespace tavoline
