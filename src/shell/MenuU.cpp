#include "shell/MenuU.h"

#include <QtCore/QCoreApplication>
#include <QtGui/QScreen>

#include "data/DMU.h"
#include "data/value/Clock.h"
#include "data/value/Text.h"
#include "toolkit/controls/Edit.h"
#include "toolkit/forms/Docking.h"
#include "toolkit/forms/Forms.h"
#include "toolkit/forms/Guard.h"
#include "toolkit/forms/Messages.h"
#include "toolkit/forms/Taps.h"

namespace tavoline {

TMenuF* MenuF = nullptr;

namespace {

// Reopened by "Actualiser", in this order. `operation` is not among them: the session lives on its current
// row.
constexpr const char* kReopened[] = {"Article",
                                     "type_produit",
                                     "Fournisseur",
                                     "Client",
                                     "A",
                                     "TVA",
                                     "utilisateur",
                                     "Endroit",
                                     "Table_",
                                     "T",
                                     "E",
                                     "commande",
                                     "C",
                                     "relation_commande",
                                     "relation_commande1",
                                     "sum_commande",
                                     "imp_commande",
                                     "imp_facture_vente",
                                     "facture_achat",
                                     "F",
                                     "Achat",
                                     "counting",
                                     "imp_fac_achat",
                                     "Caise",
                                     "CS",
                                     "min",
                                     "last",
                                     "xx1",
                                     "null4",
                                     "xxx1",
                                     "sum_x",
                                     "x1",
                                     "x2",
                                     "Caisse",
                                     "Caisse",
                                     "acce_caisse",
                                     "CSS",
                                     "Count_accee",
                                     "xx2",
                                     "Null44",
                                     "xxx3",
                                     "sum_x2",
                                     "x22",
                                     "x33",
                                     "lastt",
                                     "D",
                                     "Depence",
                                     "stat_caisse",
                                     "stat_caisse",
                                     "S_01",
                                     "D_01",
                                     "Calcul_dep",
                                     "best1",
                                     "best2",
                                     "sum_recette",
                                     "sum_depense"};

// Closed by "Changer Utilisateur", in this order.
constexpr const char* kClosedOnChange[] = {"Liste_produitF",
                                           "Type_produitF",
                                           "Liste_TypeF",
                                           "Liste_fournisseurF",
                                           "C_fournisseurF",
                                           "liste_ClientF",
                                           "C_clientF",
                                           "TVAF",
                                           "AproposF",
                                           "utilisateurFF",
                                           "Configuration_utlisateurF",
                                           "C_articleF",
                                           "liste_endroitF",
                                           "c_endroitF",
                                           "liste_tableF",
                                           "C_tableF",
                                           "commandeF",
                                           "Commande_avnF",
                                           "champsF",
                                           "liste_commandeF",
                                           "qteF",
                                           "fac_clF",
                                           "liste_facture_achatF",
                                           "c_facture_achatF",
                                           "MontantF",
                                           "liste_caiseF",
                                           "caiseF",
                                           "liste_caisseF",
                                           "C_caisseF",
                                           "Aff_caisseF",
                                           "liste_aff_caisseF",
                                           "acc_caisseF",
                                           "RenduF",
                                           "liste_depenceF",
                                           "C_depenceF",
                                           "statF",
                                           "BestF"};

// The entries of the column, and the screens that lie behind them.
struct Door {
  const char *screen, *entry;
};
constexpr Door kDoors[] = {
    {"Liste_produitF", "AdvSmoothButton9"},     {"liste_ClientF", "AdvSmoothButton7"},
    {"Liste_fournisseurF", "AdvSmoothButton8"}, {"liste_facture_achatF", "AdvSmoothButton4"},
    {"liste_depenceF", "AdvSmoothButton5"},     {"commandeF", "AdvSmoothButton6"},
    {"Commande_avnF", "AdvSmoothButton6"},      {"statF", "AdvSmoothButton3"},
    {"liste_commandeF", "AdvSmoothButton1"},    {"Configuration_utlisateurF", "AdvSmoothButton2"},
};

}  // namespace

TMenuF::TMenuF() : TForm("MenuF"), Timer1(new QTimer(this)) {
  setupUi(this);
  // No close box and no maximise box: the screen fills the display, and only "Fermer" or the window system
  // ends it.
  setWindowFlags(Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowMinimizeButtonHint);
  setGeometry(screen()->availableGeometry());
  setWindowState(Qt::WindowMaximized);

  wireMenuBar();
  wireColumn();
  ok->OnClick = [this] { okClick(); };
  Timer1->setObjectName("Timer1");
  Timer1->setInterval(9000);
  connect(Timer1, &QTimer::timeout, this, [this] { Timer1Timer(); });
  Timer1->start();
  setFocus();  // no command stands out before the keyboard is used
  Ready();
}

void TMenuF::wireMenuBar() {
  const auto on = [this](QAction* entry, std::function<void()> handler) {
    connect(entry, &QAction::triggered, this, [handler = std::move(handler)] { guarded(handler); });
  };
  on(Produit1, [this] { embed("Liste_produitF"); });
  on(Fournisseur1, [this] { embed("Liste_fournisseurF"); });
  on(Client1, [this] { embed("liste_ClientF"); });
  on(ypedeProduit1, [this] { embed("Liste_TypeF"); });
  on(ListedesTable1, [this] { embed("liste_tableF"); });
  on(Endroit1, [this] { embed("liste_endroitF"); });
  on(ModifierTVA1, [] { Forms::Show("TVAF"); });
  on(CreationnouveauCaisse1, [this] { embed("liste_caisseF"); });
  on(AffctaiondeCaisse1, [this] { embed("liste_aff_caisseF"); });
  on(Caise1, [this] { Caise1Click(); });
  on(Actualiser1, [this] { Actualiser1Click(); });
  on(ChangerUtilisateur1, [this] { ChangerUtilisateur1Click(); });
  on(Fermer1, [this] { Fermer1Click(); });
  on(N2, [] { Forms::Show("AproposF"); });

  // A submenu answers to its name like every other entry, as the action that stands for it too.
  for (QMenu* menu : {FICHIER1, CreationdeCaisse1, Apropos1}) {
    menu->menuAction()->setObjectName(menu->objectName());
    menu->setProperty("text", menu->title());
  }
}

void TMenuF::wireColumn() {
  AdvSmoothButton9->OnClick = [this] { embed("Liste_produitF"); };
  AdvSmoothButton7->OnClick = [this] { embed("liste_ClientF"); };
  AdvSmoothButton8->OnClick = [this] { embed("Liste_fournisseurF"); };
  AdvSmoothButton4->OnClick = [this] { AdvSmoothButton4Click(); };
  AdvSmoothButton5->OnClick = [this] { AdvSmoothButton5Click(); };
  AdvSmoothButton6->OnClick = [this] { AdvSmoothButton6Click(); };
  AdvSmoothButton3->OnClick = [this] { AdvSmoothButton3Click(); };
  AdvSmoothButton1->OnClick = [this] { embed("liste_commandeF"); };
  AdvSmoothButton2->OnClick = [this] { embed("Configuration_utlisateurF"); };
  Verrouiller->OnClick = [this] { ChangerUtilisateur1Click(); };
  Docking::of(RzPanel4)->OnTop = [this](const TForm* top) {
    markDoor(top);
    if (top) return;
    setFocus();  // and not what comes next in the order of Tab
    PremiersPas->Look();
  };
  PremiersPas->OnAllowed = [this](const QString& entry) {
    const auto* action = findChild<QAction*>(entry);
    if (!action) return RzGroupBar2->findChild<QWidget*>(entry)->isEnabled();
    const bool insideDesks = CreationdeCaisse1->actions().contains(action);
    return action->isEnabled() && (!insideDesks || CreationdeCaisse1->isEnabled());
  };
  PremiersPas->OnChoose = [this](const QString& entry) {
    auto* action = findChild<QAction*>(entry);
    action ? action->trigger() : RzGroupBar2->findChild<QAbstractButton*>(entry)->click();
  };
}

void TMenuF::markDoor(const TForm* top) {
  const QWidget* entry = nullptr;
  for (const Door& door : kDoors)
    if (top && top->objectName() == QLatin1String(door.screen))
      entry = RzGroupBar2->findChild<QWidget*>(QLatin1String(door.entry));
  RzGroupBar2->Mark(entry);
}

void TMenuF::FormShow() {
  Forms::Show("LoginF");
  if (auto* login = Forms::control<Edit>("LoginF", "RzEdit2")) login->SetFocus();
  FICHIER1->setEnabled(false);
  Apropos1->setEnabled(false);
  RzSplitter1->setEnabled(false);
}

bool TMenuF::dock(std::string_view instanceName) {
  TForm* screen = Forms::find(instanceName);
  if (!screen) return false;
  screen->Dock(RzPanel4);
  screen->Show();
  return true;
}

bool TMenuF::embed(std::string_view instanceName) {
  if (!dock(instanceName)) return false;
  Forms::Close("commandeF");
  return true;
}

// The message asks for a house desk as well, but only the ordinary desks are looked at.
bool TMenuF::ordinaryDeskMissing() {
  DM->Caisse.FilterBy("general=" + inQuotes(Label3->Caption()));
  if (!DM->Caisse.Eof()) return false;
  ShowMessage("Merci de céer une ou plusieurs caisses et un caisse de maison ");
  DM->Caisse.Filtered(false);
  return true;
}

// A user with several desks says at which one he works today; the answer stays in the session's row.
void TMenuF::askForDesk() {
  const std::string ofUser = "login=" + inQuotes(DBText5->Caption());
  DM->Count_accee.Reopen();
  DM->Count_accee.FilterBy(ofUser);
  if (DM->Count_accee["CountOfid_caisse"] > 1) {
    DM->acce_caisse.FilterBy(ofUser + "and general=" + inQuotes(Label3->Caption()));
    Forms::ShowModal("acc_caisseF");
    AnnounceDesk();
  }
}

void TMenuF::AnnounceDesk() {
  const std::string desk = DM->operation["id_caisse_active"].text();
  const std::size_t others = DM->store().announce(desk.empty() ? std::string() : "caisse " + desk);
  DeskElsewhere->setVisible(others > 0);
  DeskElsewhere->setText(others > 1 ? QString("aussi sur %1 autres postes").arg(others)
                                    : "aussi sur un autre poste");
}

// The one assignment was made after the login. No filter is set: the row taken is the current one.
void TMenuF::takeOnlyDesk() {
  if (DM->Count_accee["CountOfid_caisse"] != 1) return;
  DM->operation.Edit();
  DM->operation["id_caisse_active"] = DM->acce_caisse["id_caisse"];
  DM->operation.Post();
  AnnounceDesk();
}

// "Facture D'Achat    "
void TMenuF::AdvSmoothButton4Click() {
  if (ordinaryDeskMissing()) return;
  if (DM->operation["id_caisse_active"].isNull()) askForDesk();
  embed("liste_facture_achatF");
  DM->Caisse.Filtered(false);
}

// "Dépenses": whatever filter the desks have is left as it is.
void TMenuF::AdvSmoothButton5Click() {
  if (DM->Caisse.Eof()) return ShowMessage("Merci de céer une caisse");
  embed("liste_depenceF");
}

// "Commande   "
void TMenuF::AdvSmoothButton6Click() {
  DM->Reopen({&DM->Count_accee, &DM->Table_});
  if (ordinaryDeskMissing()) return;
  if (DM->Table_.Eof()) return ShowMessage("Merci de céer une table !");  // the filter of the desks stays on
  if (DM->operation["id_caisse_active"].isNull()) {
    askForDesk();
    takeOnlyDesk();
  }
  const bool mapShown = dock("commandeF");
  DM->Caisse.Filtered(false);
  if (mapShown) Label1->Caption("Active");
}

// "Statistique"
void TMenuF::AdvSmoothButton3Click() {
  embed("statF");
  DM->stat_caisse.Reopen();
}

// "Journal de caisse"
void TMenuF::Caise1Click() {
  if (ordinaryDeskMissing()) return;
  DM->Caisse.Filtered(false);
  embed("liste_caiseF");
}

void TMenuF::Actualiser1Click() {
  DM->XXX.ExecSQL();
  RzGroupBar2->setEnabled(true);
  const Store::OneVersion same(DM->store());
  for (const char* name : kReopened) DM->Find(name)->Reopen();
}

void TMenuF::ChangerUtilisateur1Click() {
  for (const char* name : kClosedOnChange) Forms::Close(name);
  FICHIER1->setEnabled(false);
  Apropos1->setEnabled(false);
  RzSplitter1->setEnabled(false);
  DM->store().announce({});
  Forms::Show("LoginF");
}

void TMenuF::Fermer1Click() {
  DM->XXX.ExecSQL();
  QCoreApplication::exit(0);
}

// The one way out that leaves a leaving time behind, and only of a session.
void TMenuF::CloseCommand() {
  if (Apropos1->isEnabled()) {
    DM->operation.Edit();
    DM->operation["date_sortie"] = Clock::today();
    DM->operation["heure_sortie"] = Clock::now().time();
    DM->operation.Post();
  }
  QCoreApplication::exit(0);
}

void TMenuF::okClick() {
  if (!Label2->Caption().empty() || Label1->Caption() != "Active") return;
  DM->Table_.Refresh();
  if (auto* redraw = Forms::control<Button>("commandeF", "RzButton1")) redraw->Click();
}

// The tiles are not changed under a finger. The timer is stopped while it works, so that a failing store
// shows one box and not a pile of them.
void TMenuF::Timer1Timer() {
  Timer1->stop();
  Taps::whenLifted(this, [this] {
    guarded([this] { ok->Click(); });
    Timer1->start();
  });
}

}  // namespace tavoline
