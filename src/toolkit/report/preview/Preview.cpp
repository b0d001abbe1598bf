#include "toolkit/report/preview/Preview.h"

#include <QtCore/QPointer>
#include <QtWidgets/QVBoxLayout>

#include "toolkit/report/preview/PageView.h"

namespace tavoline {

namespace {
QPointer<Preview> inFront;
}  // namespace

std::function<void(Preview&)> Preview::observer;

Preview* Preview::current() {
  return inFront;
}

Preview::Preview(report::Build build, const report::PrintOptions& options, QWidget* parent)
    : QDialog(parent), panel_(new PreviewPanel(this)) {
  setObjectName("PreviewF");
  setWindowTitle(QString::fromStdString(build.document->report().title));
  setWindowFlag(Qt::WindowMaximizeButtonHint);
  setWindowState(Qt::WindowMaximized);
  resize(1000, 720);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(panel_);
  panel_->OnClose = [this] { close(); };
  panel_->open(std::move(build), options);
}

void Preview::run() {
  const QPointer<Preview> before = inFront;
  inFront = this;
  if (observer) {
    show();
    observer(*this);
    close();
  } else {
    panel_->pages().setFocus();
    exec();
  }
  panel_->stopBuilding();
  inFront = before;
}

}  // namespace tavoline
