#include "bench/Cash.h"

#include <stdexcept>

#include "bench/Raw.h"
#include "cash/CaiseU.h"
#include "cash/liste_caiseU.h"
#include "data/DMU.h"
#include "shell/MenuU.h"
#include "toolkit/forms/Messages.h"
#include "toolkit/report/preview/PageView.h"
#include "toolkit/report/preview/PreviewU.h"

namespace tavoline::bench {
namespace {

constexpr int kOrdersOfDay = 400;

// The last orders become the open ones of the first desk, all of the last hours; every other one is closed.
void openDay(Glass&) {
  const std::string day = "rid > (select max(rid) from commande) - " + std::to_string(kOrdersOfDay),
                    seconds = "(30 * ((select max(rid) from commande) - rid) + 60)",
                    moment = addressHere().empty()
                                 ? "strftime('%Y-%m-%d %H:%M:%f', 'now', 'localtime', '-' || " + seconds +
                                       " || ' seconds')"
                                 : "localtimestamp(3) - " + seconds + " * interval '1 second'";
  executeHere("update commande set en_caisser = 'yes' where en_caisser = 'no' and not (" + day + ")");
  executeHere(
      "update commande set en_caisser = 'no', etat_commande = 'Terminer', id_caisse = (select \"ID_caise\" "
      "from caisse order by rid limit 1), date_commande = " +
      moment + " where " + day);
}

QWidget* pages() {
  return caiseF->frxPreview1->pages().viewport();
}

void openJournal(Glass& glass) {
  glass.choose(MenuF->Caise1, liste_caiseF->DBGrid1->viewport());
}

void atJournal(Glass& glass) {
  openDay(glass);
  openJournal(glass);
  glass.rest();
}

void begin(Glass& glass) {
  glass.press(liste_caiseF->AdvSmoothButton1, pages());
}

void begun(Glass& glass) {
  atJournal(glass);
  begin(glass);
  if (DM->x22.RecordCount() != std::size_t(kOrdersOfDay))
    throw std::runtime_error("the day's orders are not found");
  caiseF->DBLookupComboboxEh1->KeyValue(DM->x22["login"]);
  glass.rest();
}

void leave(Glass& glass) {
  glass.press(caiseF->RzBitBtn2, liste_caiseF->DBGrid1->viewport());
  glass.rest();
}

void leaveJournal(Glass&) {
  liste_caiseF->Close();
}

void leaveBoth(Glass& glass) {
  leave(glass);
  leaveJournal(glass);
}

// A summary is complete when its handler ends; what is painted of it is its first page.
void report(Glass& glass, Button* button) {
  glass.press(button, pages());
}

// Without a printer the sheet becomes a file, of which a box tells.
void save(Glass& glass) {
  const auto show = Messages::current().show;
  Messages::current().show = [](const std::string&, const std::string&) {};
  glass.press(caiseF->RzBitBtn7, liste_caiseF->DBGrid1->viewport());
  Messages::current().show = show;
  if (caiseF->Visible()) throw std::runtime_error("the closing was not saved");
}

}  // namespace

const std::vector<Gesture>& cashGestures() {
  static const std::vector<Gesture> gestures{
      {"cash, the journal", openDay, openJournal, leaveJournal},
      {"cash, a day begun", atJournal, begin, leaveBoth},
      {"cash, by article", begun, [](Glass& g) { report(g, caiseF->RzBitBtn5); }, leaveBoth},
      {"cash, by category", begun, [](Glass& g) { report(g, caiseF->RzBitBtn33); }, leaveBoth},
      {"cash, by user", begun, [](Glass& g) { report(g, caiseF->RzRapidFireButton9); }, leaveBoth},
      {"cash, a day saved", begun, save, leaveJournal},
  };
  return gestures;
}

}  // namespace tavoline::bench
