#include "toolkit/report/Build.h"

#include <QtWidgets/QProgressDialog>
#include <algorithm>

namespace tavoline::report {

namespace {
constexpr int kBlink = 500;     // milliseconds before the box comes up
constexpr int kInterval = 100;  // milliseconds between two moves of the bar
}  // namespace

ProgressBox::ProgressBox(const QString& text, QWidget* parent)
    : box_(std::make_unique<QProgressDialog>(text, "Interrompre", 0, 100, parent)) {
  box_->setWindowTitle("Tavoline");
  box_->setWindowModality(Qt::ApplicationModal);
  box_->setMinimumDuration(kBlink);
  box_->setAutoClose(false);
  box_->setAutoReset(false);
  box_->setValue(0);
  clock_.start();
}

ProgressBox::~ProgressBox() = default;

bool ProgressBox::due() const {
  return clock_.elapsed() > kInterval;
}

bool ProgressBox::tell(std::size_t done, std::size_t total) {
  if (!due()) return !box_->wasCanceled();
  clock_.restart();
  // Never zero again: that would begin the wait for the box anew.
  box_->setValue(total == 0 ? 1 : std::max(1, static_cast<int>(done * 100 / total)));
  return !box_->wasCanceled();
}

Progress ProgressBox::progress() {
  return [this](std::size_t done, std::size_t total) { return tell(done, total); };
}

bool complete(Build& build, QWidget* parent) {
  ProgressBox box("Préparation du document…", parent);
  std::size_t total = 0;
  while (build.advance && build.advance()) {
    if (!box.due()) continue;
    if (total == 0) total = build.total();
    if (!box.tell(build.done(), total)) {
      build.advance = nullptr;
      return false;
    }
  }
  build.advance = nullptr;
  return true;
}

}  // namespace tavoline::report
