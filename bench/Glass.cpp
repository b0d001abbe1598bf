#include "bench/Glass.h"

#include <QtCore/QEvent>
#include <QtGui/QAction>
#include <QtGui/QMouseEvent>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <algorithm>
#include <stdexcept>
#include <string>

#include "Screens.h"
#include "data/DMU.h"
#include "sales/Commande_avnU.h"
#include "sales/commandeU.h"
#include "sales/liste_commandeU.h"
#include "shell/LoginU.h"
#include "shell/MenuU.h"
#include "toolkit/forms/Messages.h"
#include "toolkit/report/preview/Preview.h"

namespace tavoline::bench {
namespace {

const QSize kDisplay(1024, 768);

std::string& box() {  // what the program told; no measured gesture makes it tell anything
  static std::string text;
  return text;
}

// Without a turn of the event loop, so that what is painted is painted after the handler.
void send(QEvent::Type type, QWidget* control) {
  QWidget* window = control->window();
  const QPoint there = control->mapTo(window, control->rect().center());
  QWidget* target = window->childAt(there);
  if (!target) throw std::runtime_error("nothing to press at " + control->objectName().toStdString());
  const QPointF place = target->mapFrom(window, there), onDisplay = target->mapToGlobal(place);
  const Qt::MouseButtons held = type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton;
  QMouseEvent event(type, place, onDisplay, Qt::LeftButton, held, {});
  QCoreApplication::sendEvent(target, &event);
}

void press(QWidget* control) {
  send(QEvent::MouseButtonPress, control);
  send(QEvent::MouseButtonRelease, control);
}

}  // namespace

void Glass::press(QWidget* control, const QWidget* shown) {
  paints_.forget();
  bench::press(control);
  paint(shown);
}

void Glass::choose(QAction* entry, const QWidget* shown) {
  paints_.forget();
  entry->trigger();
  paint(shown);
}

Paints::Paints() {
  qApp->installEventFilter(this);
}

Paints::~Paints() {
  qApp->removeEventFilter(this);
}

bool Paints::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Paint) ++counts_[watched];
  return false;
}

Glass::Glass() {
  Messages::current().show = [](const std::string& text, const std::string&) { box() = text; };
  if (!startUp(screensInOrder())) throw std::runtime_error(box());
  MenuF->setWindowState(Qt::WindowNoState);
  MenuF->resize(kDisplay);
  MenuF->Show();
  while (paints_.of(LoginF->RzEdit2) == 0) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

Glass::~Glass() {
  shutDown();
}

void Glass::logIn() {
  const std::string password = DM->utilisateur["mot_pase"].text();
  LoginF->RzEdit2->Text(DM->utilisateur["login"].text());
  LoginF->RzEdit1->Text(password);
  bench::press(LoginF->RzBitBtn2);
  bench::press(MenuF->AdvSmoothButton6);
  commandeF->DBLookupListBox1->Choose(1);
  rest();
}

void Glass::takeTable() {
  for (DM->Table_.First(); !DM->Table_.Eof(); DM->Table_.Next()) {
    if (DM->Table_["etat"] != "OFF") continue;
    const std::string name = DM->Table_["table"].text();
    for (ShapeButton* tile : commandeF->RzFlowPanel1->tiles<ShapeButton>()) {
      if (tile->Caption() != name) continue;
      tile->Click();
      Commande_avnF->DBLookupListBox1->Choose(1);
      return rest();
    }
  }
  throw std::runtime_error("every table of the place is taken");
}

std::size_t Glass::tiles() {
  const auto all = Commande_avnF->RzFlowPanel1->tiles<Panel>();
  return static_cast<std::size_t>(std::count_if(all.begin(), all.end(), [](const Panel* tile) {
    return tile->visibleRegion().contains(tile->rect().center());
  }));
}

void Glass::saveOrder() {
  bench::press(Commande_avnF->Enregistrer);
  rest();
}

void Glass::lower(std::size_t tile) {
  under_ = Commande_avnF->RzFlowPanel1->tiles<Panel>().at(tile);
  send(QEvent::MouseButtonPress, under_);
  paints_.forget();
}

void Glass::lift() {
  send(QEvent::MouseButtonRelease, under_);
}

void Glass::paint() {
  paint(Commande_avnF->RzDBGrid1->viewport());
}

void Glass::paint(const QWidget* widget) {
  while (paints_.of(widget) == 0) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

int Glass::linePaints() const {
  return paints_.of(Commande_avnF->RzDBGrid1->viewport());
}

void Glass::inHistory(const std::function<void()>& gesture) {
  paints_.forget();
  gesture();
  paint(liste_commandeF->DBGrid1->viewport());
}

void Glass::pressInHistory(QWidget* control) {
  inHistory([control] { bench::press(control); });
}

void Glass::openHistory() {
  pressInHistory(MenuF->AdvSmoothButton1);
}

void Glass::closeHistory() {
  bench::press(liste_commandeF->Fermer);
  bench::press(MenuF->AdvSmoothButton6);
  rest();
}

void Glass::countHistory() {
  const auto* rows = liste_commandeF->DBGrid1->model();
  if (!QTest::qWaitFor([&] { return std::size_t(rows->rowCount()) == DM->commande.RecordCount(); }))
    throw std::runtime_error("the history's grid does not reach its last row");
  rest();
}

void Glass::printJournal() {
  Preview::observer = [](Preview& preview) { preview.grab(); };
  bench::press(liste_commandeF->Imprimer);
  Preview::observer = nullptr;
}

void Glass::rest() {
  QTest::qWait(20);  // the display paints what is left, and nothing of it is timed
  DM->Idle();
  if (!box().empty()) throw std::runtime_error(box());
}

}  // namespace tavoline::bench
