#pragma once

#include <QtCore/QElapsedTimer>
#include <functional>
#include <memory>

#include "toolkit/report/output/Export.h"

class QProgressDialog;

namespace tavoline::report {

/// A document that may still be in the making: its finished pages can be looked at meanwhile.
struct Build {
  std::shared_ptr<Document> document;
  std::function<bool()>
      advance;  ///< One more piece of work; false when complete. Empty for a finished document.
  std::function<std::size_t()> done;   ///< Records read so far,
  std::function<std::size_t()> total;  ///< of how many; may be slow.
  bool interrupted = false;            ///< The user gave up: there are more records than pages show.
};

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

/// Does all the work that is left, with a progress box when it lasts. False when the user gave up; the
/// document then holds the pages made so far.
bool complete(Build& build, QWidget* parent);

}  // namespace tavoline::report
