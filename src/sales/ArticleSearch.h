#pragma once

#include <QtCore/QObject>
#include <QtCore/QString>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "data/value/Value.h"
#include "toolkit/controls/Edit.h"

namespace tavoline {

/// The search over all articles of the order entry: by typing, and by scanning, since a reader of barcodes is
/// a fast keyboard that ends in Return. While its screen is on top, signs that are typed anywhere on it and
/// in no other input go to the search, and Return with them as long as something stands there.
class ArticleSearch : public QObject {
  Q_OBJECT

 public:
  struct Article {
    std::string code, designation;
    Value category;
    QString folded;  // the designation without case and accents
  };

  ArticleSearch(Edit* input, QWidget* screen);

  std::function<void(const Article*)> OnFound;  ///< Another article comes forward; null for none.
  std::function<void(const Article&)> OnTaken;  ///< Return on the one that is found.

  void Clear();  ///< Nothing is sought, and nothing found.

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void changed();
  void taken();
  const Article* find(const QString& text);
  bool belongsHere(const QObject* watched) const;
  bool takes(const QKeyEvent& key) const;

  Edit* input_;
  QWidget* screen_;
  std::vector<Article> articles_;     // all of them, read when a search begins
  std::optional<std::string> found_;  // the code of the one that is forward
};

}  // namespace tavoline
