#include "tools/screens/Scenes.h"

#include <QtGui/QAction>
#include <QtWidgets/QApplication>
#include <cmath>
#include <utility>

#include "cash/CaiseU.h"
#include "cash/acc_caisseU.h"
#include "cash/comptageU.h"
#include "data/DMU.h"
#include "data/value/Regional.h"
#include "sales/Commande_avnU.h"
#include "sales/RenduU.h"
#include "sales/commandeU.h"
#include "shell/AproposU.h"
#include "shell/clavierU.h"
#include "toolkit/controls/Lookup.h"
#include "toolkit/forms/Messages.h"
#include "tools/screens/Stage.h"

namespace tavoline {

namespace {

void chooseCategory(int code) {
  Commande_avnF->DBLookupListBox1->Choose(code);
}

void tapArticles(std::initializer_list<std::size_t> numbers) {
  for (const std::size_t number : numbers) Commande_avnF->RzFlowPanel1->tiles<Panel>().at(number)->Click();
}

// The first free table that the map shows.
void takeTable() {
  DM->Table_.First();
  while (DM->Table_["etat"] != "OFF") DM->Table_.Next();
  const std::string name = DM->Table_["table"].text();
  for (ShapeButton* tile : commandeF->RzFlowPanel1->tiles<ShapeButton>())
    if (tile->Caption() == name) return tile->Click();
}

// The change, then the ticket in its preview; each is closed again.
void closeTable(Stage& stage) {
  Stage::whenModal([&stage](QWidget&) {
    stage.type("RenduF.Edit1", "3000");
    stage.keep("change");
    Stage::whenModal([&stage](QWidget& preview) {
      stage.keep("ticket", preview.grab().toImage());
      preview.close();
    });
    stage.tap("RenduF.Enregistrer");
  });
  stage.tap("Commande_avnF.Cloturer");
}

// A button that opens an entry as a modal screen, which is kept and left again.
void tapModal(Stage& stage, const char* button, const char* file, const char* leave) {
  Stage::whenModal([=, &stage](QWidget&) {
    stage.keep(file);
    stage.tap(leave);
  });
  stage.tap(button);
}

// A purchase invoice that the desk pays, and that is paid in part.
void standOnDebt() {
  DM->facture_achat.First();
  while (!DM->facture_achat.Eof() &&
         !(DM->facture_achat["en_caisse"] == "OUI" && DM->facture_achat["MONTANT_VERSE"] > 0 &&
           DM->facture_achat["MONTANT_RESTE"] > 0))
    DM->facture_achat.Next();
}

// The payment dialog of the current purchase invoice, then its document; each is closed again.
void payAndPrint(Stage& stage) {
  Stage::whenModal([&stage](QWidget& dialog) {
    stage.keep("payment");
    dialog.close();
  });
  stage.control<QAction>("liste_facture_achatF.MontantVerse").trigger();
  standOnDebt();
  Stage::whenModal([&stage](QWidget& preview) {
    stage.keep("purchase-invoice", preview.grab().toImage());
    preview.close();
  });
  stage.tap("liste_facture_achatF.Imprimer");
}

// Guests still sit at some tables, of which the closing tells.
void beginClosing(Stage& stage) {
  const auto show = std::exchange(Messages::current().show, [](const std::string&, const std::string&) {});
  stage.tap("liste_caiseF.AdvSmoothButton1");
  Messages::current().show = show;
}

// The book balance but for a coin of 50, most of it in notes of 1000.
void countDrawer(Stage& stage) {
  const double wanted = readFloat(caiseF->DBText7->Caption()) - 50;
  const double thousands = std::floor(wanted / 1000) * 1000;
  const double hundreds = std::floor((wanted - thousands) / 100) * 100;
  stage.type("comptageF.Edit2", formatFloat(thousands));
  stage.type("comptageF.Edit7", formatFloat(hundreds));
  stage.type("comptageF.Edit11", formatFloat(std::round(100 * (wanted - thousands - hundreds)) / 100));
}

}  // namespace

std::vector<Scene> scenes() {
  return {
      {"login", [](Stage& stage) { stage.type("LoginF.RzEdit2", "10"); }},
      {"mot-de-passe",
       [](Stage& stage) {
         stage.type("LoginF.RzEdit1", "1010");
         stage.tap("LoginF.RzBitBtn4");
       }},
      {"menu", [](Stage& stage) { stage.tap("LoginF.RzBitBtn2"); }},
      {"map",
       [](Stage& stage) {
         stage.tap("MenuF.AdvSmoothButton6");
         commandeF->DBLookupListBox1->Choose(1);
         stage.settle();
       }},
      {"order",
       [](Stage& stage) {
         takeTable();
         chooseCategory(1);
         tapArticles({0, 0, 1, 2});
         chooseCategory(4);
         tapArticles({0, 1, 1});
         stage.settle();
       }},
      {"quantity", [](Stage& stage) { stage.tap("Commande_avnF.Qte"); }},
      {"",
       [](Stage& stage) {
         stage.tap("qteF.Enregistrer");
         Stage::whenModal([&stage](QWidget&) {
           stage.type("champsF.DBEdit1", "10");
           stage.keep("discount");
           stage.tap("champsF.Enregistrer");
         });
         stage.tap("Commande_avnF.Remisse");
       }},
      {"", [](Stage& stage) { closeTable(stage); }},
      {"history", [](Stage& stage) { stage.tap("MenuF.AdvSmoothButton1"); }},
      {"",
       [](Stage& stage) {
         Stage::whenModal([&stage](QWidget&) {
           stage.keep("client-invoice");
           stage.tap("fac_clF.Fermer");
         });
         stage.control<QAction>("liste_commandeF.FacturesClient").trigger();
       }},
      {"articles",
       [](Stage& stage) {
         stage.tap("MenuF.AdvSmoothButton9");
         stage.tap("Liste_produitF.Initialiser");  // the sale leaves its own filter
         for (int row = 0; row < 21; ++row) stage.tap("Liste_produitF.Suivant");
       }},
      {"article", [](Stage& stage) { stage.tap("Liste_produitF.Modifier"); }},
      {"places",
       [](Stage& stage) {
         stage.tap("C_articleF.Fermer");
         stage.choose("Endroit1");
       }},
      {"place", [](Stage& stage) { stage.tap("liste_endroitF.Modifier"); }},
      {"tables",
       [](Stage& stage) {
         stage.tap("c_endroitF.Fermer");
         stage.choose("ListedesTable1");
       }},
      {"table", [](Stage& stage) { stage.tap("liste_tableF.Modifier"); }},
      {"categories",
       [](Stage& stage) {
         stage.tap("C_tableF.Fermer");
         stage.choose("ypedeProduit1");
       }},
      {"category", [](Stage& stage) { stage.tap("Liste_TypeF.Modifier"); }},
      {"vat",
       [](Stage& stage) {
         stage.tap("Type_produitF.Fermer");
         stage.choose("ModifierTVA1");
       }},
      {"desks",
       [](Stage& stage) {
         stage.tap("TVAF.Enregistrer");
         stage.choose("CreationnouveauCaisse1");
         tapModal(stage, "liste_caisseF.AdvSmoothButton4", "desk", "C_caisseF.Fermer");
       }},
      {"assignments",
       [](Stage& stage) {
         stage.choose("AffctaiondeCaisse1");
         tapModal(stage, "liste_aff_caisseF.RzShapeButton4", "assignment", "Aff_caisseF.Fermer");
       }},
      {"suppliers", [](Stage& stage) { stage.tap("MenuF.AdvSmoothButton8"); }},
      {"supplier", [](Stage& stage) { stage.tap("Liste_fournisseurF.Modifier"); }},
      {"clients",
       [](Stage& stage) {
         stage.tap("C_fournisseurF.Fermer");
         stage.tap("MenuF.AdvSmoothButton7");
       }},
      {"client", [](Stage& stage) { stage.tap("liste_ClientF.Modifier"); }},
      {"purchases",
       [](Stage& stage) {
         stage.tap("C_clientF.Fermer");
         stage.tap("MenuF.AdvSmoothButton4");
         standOnDebt();
       }},
      {"", [](Stage& stage) { payAndPrint(stage); }},
      {"purchase",
       [](Stage& stage) {
         stage.tap("liste_facture_achatF.Modifier");
         stage.tap("c_facture_achatF.Enregistrer");
         stage.tap("c_facture_achatF.x2");
       }},
      {"expenses",
       [](Stage& stage) {
         stage.tap("c_facture_achatF.Fermer");
         stage.tap("MenuF.AdvSmoothButton5");
       }},
      {"closings", [](Stage& stage) { stage.choose("Caise1"); }},
      {"count",
       [](Stage& stage) {
         beginClosing(stage);
         stage.tap("caiseF.AdvSmoothButton4");
         countDrawer(stage);
       }},
      {"closing",
       [](Stage& stage) {
         stage.tap("comptageF.RzBitBtn7");
         stage.type("caiseF.DBEdit3", "20000");
       }},
      {"closing-of-a-week-ago",
       [](Stage& stage) {
         stage.tap("caiseF.RzBitBtn2");
         for (int row = 0; row < 20; ++row) stage.tap("liste_caiseF.AdvSmoothButton5");
         stage.tap("liste_caiseF.RzShapeButton4");
         stage.tap("caiseF.RzBitBtn33");
       }},
      {"",
       [](Stage& stage) {
         stage.tap("caiseF.RzBitBtn2");
         stage.tap("liste_caiseF.AdvSmoothButton2");
       }},
      {"expenses", [](Stage& stage) { stage.tap("MenuF.AdvSmoothButton5"); }},
      {"expense", [](Stage& stage) { stage.tap("liste_depenceF.AdvSmoothButton4"); }},
      {"statistics",
       [](Stage& stage) {
         stage.tap("C_depenceF.AdvSmoothButton3");
         stage.tap("MenuF.AdvSmoothButton3");
       }},
      {"best-sellers", [](Stage& stage) { stage.tap("statF.MeilleurVente"); }},
      {"balances", [](Stage& stage) { stage.tap("statF.EtatCaisses"); }},
      {"utilisateurs",
       [](Stage& stage) {
         stage.tap("statF.Fermer");
         stage.tap("MenuF.AdvSmoothButton2");
       }},
      {"utilisateur", [](Stage& stage) { stage.tap("Configuration_utlisateurF.Modifier"); }},
      {"a-propos",
       [](Stage& stage) {
         stage.tap("utilisateurFF.Fermer");
         stage.tap("Configuration_utlisateurF.Quitter");
         stage.choose("N2");
       }},
      {"keypad",
       [](Stage&) {
         AproposF->Close();
         clavierF->Show();
       }},
      {"",
       [](Stage& stage) {
         clavierF->Close();
         stage.choose("ChangerUtilisateur1");
         stage.type("LoginF.RzEdit2", "32");
         stage.type("LoginF.RzEdit1", "3232");
         stage.tap("LoginF.RzBitBtn2");
         Stage::whenModal([&stage](QWidget&) {
           stage.keep("desk-of-the-day");
           acc_caisseF->RzDBLookupComboBox1->Choose("C002");
           stage.tap("acc_caisseF.Enregistrer");
         });
         stage.tap("MenuF.AdvSmoothButton6");
       }},
  };
}

}  // namespace tavoline
