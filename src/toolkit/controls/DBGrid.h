#pragma once

#include <QtWidgets/QTableView>
#include <functional>
#include <string>

#include "toolkit/controls/Binding.h"

namespace tavoline {

/// A grid over all visible rows of a dataset: striped, first page at once however long the table, the current
/// row in view. A click on a row makes its dataset stand there, then OnCellClick runs; cursor keys move it
/// too. `columns` is "field=Title" per line, in order, with ":right", ":rw" or a width after "|":
/// "prix=Prix|right".
class DBGrid : public QTableView, public Binding {
  Q_OBJECT
  Q_PROPERTY(QString dataSource READ dataSourceName WRITE setDataSourceName)
  Q_PROPERTY(QStringList columns READ columns WRITE setColumns)
  Q_PROPERTY(bool readOnly MEMBER readOnly_)

 public:
  explicit DBGrid(QWidget* parent = nullptr);
  ~DBGrid() override;

  std::function<void()> OnCellClick;
  std::function<void()> OnDblClick;
  /// The background of a cell, or an invalid colour for its own; `record` as Dataset::ValueAt counts.
  std::function<QColor(Dataset& rows, std::size_t record, const std::string& field)> OnCellColour;

  QStringList columns() const { return columns_; }
  void setColumns(const QStringList& columns);
  void bind() override;

 protected:
  void pull() override;

 private:
  class Model;
  QStringList columns_;
  bool readOnly_ = true;
  Model* model_ = nullptr;
};

}  // namespace tavoline
