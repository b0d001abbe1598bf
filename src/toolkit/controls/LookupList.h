#pragma once

#include <QtCore/QAbstractListModel>
#include <QtCore/QString>

#include "data/dataset/Dataset.h"

namespace tavoline {

/// The list half of a lookup: rows of `listSource`, the key in `keyField`, what is shown in `listFields`
/// (";" between names). Choosing makes the list's dataset stand on the chosen row; showing a value does not.
class LookupList {
 public:
  QString listSource, keyField, listFields;

  Dataset* dataset() const;   ///< Null without a source or before DM exists.
  std::size_t count() const;  ///< 0 for a closed dataset.
  Value key(std::size_t row) const;
  QString text(std::size_t row) const;  ///< The list fields of the row, " · " between them.
  int rowOf(const Value& key) const;    ///< -1 if absent, and for null.
  void choose(std::size_t row) const;

 private:
  Value at(std::size_t row, const QString& field) const;
};

/// The rows of a lookup list for a Qt view. Counts them when told to, and reads those that are shown.
class LookupRows : public QAbstractListModel {
 public:
  explicit LookupRows(const LookupList& list) : list_(list) {}
  void reread();
  int rowCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : count_; }
  QVariant data(const QModelIndex& index, int role) const override;

 private:
  const LookupList& list_;
  int count_ = 0;
};

}  // namespace tavoline
