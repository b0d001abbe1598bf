#include "toolkit/forms/TForm.h"

#include <QtCore/QEventLoop>
#include <QtGui/QCloseEvent>
#include <QtGui/QScreen>
#include <QtGui/QWindow>
#include <QtWidgets/QApplication>

#include "data/DMU.h"
#include "toolkit/forms/Bindable.h"
#include "toolkit/forms/Docking.h"
#include "toolkit/forms/Forms.h"
#include "toolkit/forms/Guard.h"

namespace tavoline {

TForm::TForm(const char* instanceName) {
  setObjectName(QString::fromUtf8(instanceName));
  setAutoFillBackground(true);  // opaque, so that what it covers is not painted
  Forms::add(this);
}

TForm::~TForm() {
  if (panel_ && open_) Docking::of(panel_)->close(this);
  Forms::remove(this);
}

void TForm::Ready() {
  if (DM) BindControls();
}

void TForm::BindControls() {
  for (QWidget* child : findChildren<QWidget*>()) {
    if (auto* control = dynamic_cast<Bindable*>(child)) control->bind();
  }
}

void TForm::Show() {
  const bool wasHidden = !open_;
  open_ = true;
  if (panel_) {
    Docking::of(panel_)->open(this);
  } else {
    showWindow();
  }
  if (wasHidden) FormShow();
}

void TForm::showWindow() {
  const bool free = !(windowState() & (Qt::WindowMaximized | Qt::WindowFullScreen));
  if (!isVisible() && free) {
    if (!testAttribute(Qt::WA_Resized)) adjustSize();
    QRect frame(QPoint(), size());
    frame.moveCenter(screen()->availableGeometry().center());
    move(frame.topLeft());
  }
  show();
  // The first screen is the frame of all the others: their windows stay in front of it.
  TForm* first = Forms::all().front();
  if (first != this && windowHandle() && first->windowHandle()) {
    windowHandle()->setTransientParent(first->window()->windowHandle());
  }
  raise();
  if (!windowFlags().testFlag(Qt::WindowDoesNotAcceptFocus)) activateWindow();
}

void TForm::ShowModal() {
  QEventLoop loop;
  struct Modality {
    TForm& form;
    Modality(TForm& f, QEventLoop& l) : form(f) {
      form.setWindowModality(Qt::ApplicationModal);
      form.leaveModal_ = [&l] { l.quit(); };
    }
    ~Modality() {
      form.leaveModal_ = nullptr;
      form.conceal();  // only if FormShow failed; otherwise it is closed by now
      form.setWindowModality(Qt::NonModal);
    }
  } modality(*this, loop);
  Show();
  if (open_) loop.exec();
}

void TForm::Close() {
  if (!open_) return;
  FormClose();
  conceal();
  if (leaveModal_) leaveModal_();
}

void TForm::conceal() {
  if (!open_) return;
  open_ = false;
  hide();
  if (panel_) return Docking::of(panel_)->close(this);
  // Where no window manager does it, the focus goes back to the frame of all screens.
  TForm* first = Forms::all().front();
  if (first != this && first->isVisible() && !QApplication::activeModalWidget()) first->activateWindow();
}

void TForm::Dock(QWidget* panel) {
  if (panel_ == panel) return;
  const bool wasOpen = open_;
  conceal();
  panel_ = panel;
  setParent(panel, Qt::Widget);
  open_ = wasOpen;
  if (wasOpen) Docking::of(panel)->open(this);
}

void TForm::closeEvent(QCloseEvent* event) {
  event->ignore();  // the screen itself decides what closing means
  guarded([this] { CloseCommand(); });
}

}  // namespace tavoline
