#include "toolkit/forms/ProgressBox.h"

#include <QtCore/QCoreApplication>
#include <QtWidgets/QProgressDialog>

namespace tavoline {

namespace {
constexpr int kBlink = 300;     // milliseconds before the box comes up
constexpr int kInterval = 100;  // milliseconds between two moves of the bar
}  // namespace

ProgressBox::ProgressBox(const QString& text, QWidget* parent) : text_(text), parent_(parent) {}

ProgressBox::~ProgressBox() = default;

bool ProgressBox::due() {
  if (!running_.isValid()) {
    running_.start();
    told_.start();
  }
  return told_.elapsed() > kInterval;
}

// The work may begin with a question or end with a message to the user; the box is there for the work alone.
bool ProgressBox::tell(std::size_t done, std::size_t total) {
  const bool finished = total != 0 && done >= total;
  if (finished) box_.reset();
  if (finished || givenUp_ || !due()) return !givenUp_;
  told_.restart();
  if (!box_ && running_.elapsed() > kBlink) show();
  if (!box_) return true;
  if (total == 0)
    box_->setRange(0, 0);
  else
    box_->setValue(static_cast<int>(done * 100 / total));
  QCoreApplication::processEvents();
  givenUp_ = box_->wasCanceled();
  return !givenUp_;
}

void ProgressBox::show() {
  box_ = std::make_unique<QProgressDialog>(text_, "Interrompre", 0, 100, parent_);
  box_->setWindowTitle("Tavoline");
  box_->setWindowModality(Qt::ApplicationModal);
  box_->setMinimumDuration(0);
  box_->setAutoClose(false);
  box_->setAutoReset(false);
  box_->show();
}

Progress ProgressBox::progress() {
  return [this](std::size_t done, std::size_t total) { return tell(done, total); };
}

}  // namespace tavoline
