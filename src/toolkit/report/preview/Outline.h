#pragma once

#include <QtCore/QAbstractListModel>
#include <memory>

#include "toolkit/report/model/Document.h"
#include "toolkit/report/preview/PreviewU.h"

namespace tavoline {

/// The pages of a document by number and by what stands first on them. Reads only the pages that a list
/// shows.
class PreviewPanel::Outline : public QAbstractListModel {
 public:
  void setDocument(std::shared_ptr<report::Document> document);
  void grown();

  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;

 private:
  std::shared_ptr<report::Document> document_;
  int rows_ = 0;
};

}  // namespace tavoline
