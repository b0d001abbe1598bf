#pragma once

#include <QtCore/QString>

#include "data/dataset/DataSource.h"

class QWidget;

namespace tavoline {

/// The tie of one control to a data source, and for most controls to one field of it. Events only mark the control
/// stale; it pulls its value when it is asked for it or when the event loop comes round, so that a handler of forty
/// steps repaints once. Controls derive from it beside their Qt class and declare the properties
/// `dataSource` (a partner's name in DM) and `dataField`.
class Binding : public DataListener {
 public:
  virtual ~Binding();

  QString dataSourceName() const { return sourceName_; }
  void setDataSourceName(const QString& name) { sourceName_ = name; }
  QString dataField() const { return field_; }
  void setDataField(const QString& field) { field_ = field; }

  /// Finds the partner in DM; throws DatasetError for an unknown name. No effect without a name.
  virtual void bind();
  DataSource* source() const { return source_; }
  Dataset* dataset() const;  ///< Null while unbound.
  Value fieldValue() const;  ///< Null while unbound or without a current row.
  std::string fieldText() const;

  /// Brings a stale control up to date now.
  void sync();

 protected:
  Binding();
  virtual void pull() = 0;  ///< Show the field's value now.
  void dataEvent(DataEvent event) override;
  void markStale();

 private:
  friend class BindingQueue;
  QString sourceName_, field_;
  DataSource* source_ = nullptr;
  bool stale_ = false;
};

}  // namespace tavoline
