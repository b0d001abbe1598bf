#include "toolkit/forms/TForm.h"

#include <QtCore/QEventLoop>
#include <QtGui/QCloseEvent>
#include <QtGui/QScreen>
#include <QtGui/QWindow>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QAbstractSpinBox>
#include <QtWidgets/QApplication>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPlainTextEdit>

#include "data/DMU.h"
#include "toolkit/forms/Bindable.h"
#include "toolkit/forms/Dim.h"
#include "toolkit/forms/Docking.h"
#include "toolkit/forms/Forms.h"
#include "toolkit/forms/Guard.h"
#include "toolkit/forms/Names.h"
#include "toolkit/forms/Taps.h"

namespace tavoline {

namespace {

/// Something that a user types or chooses in.
bool isInput(const QWidget& widget) {
  if (const auto* line = qobject_cast<const QLineEdit*>(&widget)) return !line->isReadOnly();
  if (const auto* text = qobject_cast<const QPlainTextEdit*>(&widget)) return !text->isReadOnly();
  return qobject_cast<const QComboBox*>(&widget) || qobject_cast<const QAbstractSpinBox*>(&widget);
}

const TForm* screenOf(const QWidget* control) {
  while (control && !qobject_cast<const TForm*>(control)) control = control->parentWidget();
  return static_cast<const TForm*>(control);
}

}  // namespace

TForm::TForm(const char* instanceName) {
  setObjectName(QString::fromUtf8(instanceName));
  setAutoFillBackground(true);  // opaque, so that what it covers is not painted
  Forms::add(this);
  Taps::instance();
  Dim::instance();
}

TForm::~TForm() {
  if (panel_ && open_) Docking::of(panel_)->close(this);
  Forms::remove(this);
}

void TForm::Ready() {
  nameControls(*this);
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
  if (wasHidden) {
    focusFirstInput();
    FormShow();
    if (panel_) focusSomewhere();
  }
  Taps::screenChanged();
}

/// In the order of the Tab key.
void TForm::focusFirstInput() {
  for (QWidget* at = nextInFocusChain(); at != this; at = at->nextInFocusChain()) {
    if (!isInput(*at) || !at->isEnabled() || !at->isVisibleTo(this) || !(at->focusPolicy() & Qt::TabFocus) ||
        screenOf(at) != this)
      continue;
    at->setFocus(Qt::OtherFocusReason);
    auto* list = qobject_cast<QComboBox*>(at);
    if (auto* line = list ? list->lineEdit() : qobject_cast<QLineEdit*>(at)) line->selectAll();
    if (auto* text = qobject_cast<QPlainTextEdit*>(at)) text->selectAll();
    return;
  }
}

/// A screen without an input, or whose first one is hidden by now: the keyboard begins at its first control,
/// and not in the menu around it.
void TForm::focusSomewhere() {
  const QWidget* held = window()->focusWidget();  // the application has none while another one is active
  if (QApplication::activeModalWidget() || !isVisible() || (held && isAncestorOf(held) && held->isVisible()))
    return;
  for (QWidget* at = nextInFocusChain(); at != this; at = at->nextInFocusChain()) {
    if (at->isEnabled() && at->isVisible() && (at->focusPolicy() & Qt::TabFocus) && screenOf(at) == this)
      return at->setFocus(Qt::OtherFocusReason);
  }
}

/// Told before the window is first shown: a window manager asks no later.
void TForm::belongToFirst() {
  TForm* first = Forms::all().front();
  if (first == this || isVisible()) return;
  if (windowType() == Qt::Window) setWindowFlags((windowFlags() & ~Qt::WindowType_Mask) | Qt::Dialog);
  winId();
  windowHandle()->setTransientParent(first->window()->windowHandle());
}

void TForm::showWindow() {
  const bool free = !(windowState() & (Qt::WindowMaximized | Qt::WindowFullScreen));
  if (!isVisible() && free) {
    if (!testAttribute(Qt::WA_Resized)) adjustSize();
    QRect frame(QPoint(), size());
    frame.moveCenter(screen()->availableGeometry().center());
    move(frame.topLeft());
  }
  belongToFirst();
  show();
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
  Taps::screenChanged();
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

void TForm::CloseCommand() {
  for (QAbstractButton* leave : findChildren<QAbstractButton*>()) {
    if (leave->text().trimmed() != QLatin1String("Fermer") || screenOf(leave) != this) continue;
    if (leave->isEnabled() && leave->isVisibleTo(this)) return leave->click();
  }
  Close();
}

void TForm::closeEvent(QCloseEvent* event) {
  event->ignore();  // the screen itself decides what closing means
  guarded([this] { CloseCommand(); });
}

}  // namespace tavoline
