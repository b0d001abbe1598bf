#pragma once

#include <QtCore/QString>
#include <functional>

#include "data/dataset/DataSource.h"
#include "toolkit/forms/Bindable.h"

class QWidget;

namespace tavoline {

/// The tie of one control to a data source, and for most controls to one field of it. Events only mark the
/// control stale; it pulls its value when it is asked for it or when the event loop comes round, so that a
/// handler of forty steps repaints once. A control that is not visible pulls when it is asked, or when it is
/// shown. Controls derive from it beside their Qt class and declare the properties `dataSource` (a partner's
/// name in DM) and `dataField`.
class Binding : public Bindable, public DataListener {
 public:
  virtual ~Binding();
  Binding(const Binding&) = delete;
  Binding& operator=(const Binding&) = delete;

  QString dataSourceName() const { return sourceName_; }
  void setDataSourceName(const QString& name) { sourceName_ = name; }
  QString dataField() const { return field_; }
  void setDataField(const QString& field) { field_ = field; }

  /// An amount: shown with two decimals, whatever it holds exactly. A property of those that declare it.
  bool money() const { return money_; }
  void setMoney(bool money) { money_ = money; }

  /// Finds the partner in DM; throws DatasetError for an unknown name. No effect without a name.
  void bind() override;
  DataSource* source() const { return source_; }
  Dataset* dataset() const;  ///< Null while unbound.
  /// Null while unbound, for a closed dataset, for a field that it does not have, and without a current row.
  Value fieldValue() const;
  std::string fieldText() const;  ///< As the control shows it.

  /// Brings a stale control up to date now.
  void sync();

 protected:
  explicit Binding(QWidget* self);
  virtual void pull() = 0;  ///< Show the field's value now. May throw what the store throws.
  void dataEvent(DataEvent event) override;
  void markStale();

  /// While one lives, values are read for display only: no input is asked to give up its typed text for it.
  class Displaying {
   public:
    Displaying() { ++depth; }
    ~Displaying() { --depth; }
    Displaying(const Displaying&) = delete;
    Displaying& operator=(const Displaying&) = delete;
    static bool now() { return depth > 0; }

   private:
    static int depth;
  };
  Value displayValue() const;                   ///< As fieldValue, for display.
  std::string shown(const Value& value) const;  ///< How the control shows a value.

  QWidget* self() const { return self_; }

 private:
  friend class BindingQueue;
  QWidget* self_;
  QString sourceName_, field_;
  DataSource* source_ = nullptr;
  bool stale_ = false, money_ = false;
};

/// For controls that show the rows of another dataset than the one of their field: marks its owner stale with
/// them.
class RowsListener : public DataListener {
 public:
  explicit RowsListener(std::function<void(DataEvent)> onEvent) : onEvent_(std::move(onEvent)) {}
  virtual ~RowsListener();
  RowsListener(const RowsListener&) = delete;
  RowsListener& operator=(const RowsListener&) = delete;

  /// Throws DatasetError for a partner that DM does not have.
  void listenTo(const QString& partner);
  Dataset* dataset() const { return source_ ? &source_->dataset() : nullptr; }
  void dataEvent(DataEvent event) override { onEvent_(event); }

 private:
  std::function<void(DataEvent)> onEvent_;
  DataSource* source_ = nullptr;
};

}  // namespace tavoline
