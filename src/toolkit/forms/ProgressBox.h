#pragma once

#include <QtCore/QElapsedTimer>
#include <QtCore/QString>
#include <functional>
#include <memory>

class QProgressDialog;
class QWidget;

namespace tavoline {

/// Told now and then by what may last; false gives the work up. `total` 0: nobody knows how much it is.
using Progress = std::function<bool(std::size_t done, std::size_t total)>;

/// A box with a bar and a button to give up, which comes up when an action lasts longer than a blink.
/// Meanwhile nothing else takes input.
class ProgressBox {
 public:
  ProgressBox(const QString& text, QWidget* parent);
  ~ProgressBox();

  bool tell(std::size_t done, std::size_t total);  ///< False once the user gave up.
  Progress progress();                             ///< The same to hand on; for as long as the box lives.
  bool due();                                      ///< Whether it is worth telling again.

 private:
  void show();

  QString text_;
  QWidget* parent_;
  std::unique_ptr<QProgressDialog> box_;
  QElapsedTimer running_, told_;
  bool givenUp_ = false;
};

}  // namespace tavoline
