#include "tools/store/Check.h"

#include <gmock/gmock.h>

#include "tests/tools/ToolFixture.h"
#include "tools/store/demo/Demo.h"

namespace tavoline::tool {
namespace {

using testing::Contains;
using testing::HasSubstr;

class CheckTest : public ToolTest {
 protected:
  static void SetUpTestSuite() {
    whole = std::filesystem::temp_directory_path() / ("tavoline-whole-" + std::to_string(getpid()));
    std::filesystem::remove(whole);
    Generation generation;
    generation.orders = 300;
    createGenerated(whole.string(), generation);
  }
  static void TearDownTestSuite() { std::filesystem::remove(whole); }

  void SetUp() override {
    ToolTest::SetUp();
    std::filesystem::copy_file(whole, file());
  }

  static inline std::filesystem::path whole;
};

TEST_F(CheckTest, FindsEachFault) {
  struct {
    const char* plant;
    const char* finding;
  } const faults[] = {
      {"UPDATE relation_commande SET n_commande = 999999 WHERE rid = 1",
       "Lignes de commande sans commande, n° : 999999"},
      {"UPDATE relation_commande SET n_commande = NULL WHERE rid = 1",
       "Lignes de commande sans commande, n° : (vide)"},
      {"DELETE FROM facture_achat WHERE N_facture = 3", "Lignes d'achat sans facture, n° : 3"},
      {"UPDATE Table_ SET etat = 'ON', n_commande = 5 WHERE ID_table = 3",
       "Tables occupées sans commande en cours : Salle 3"},
      {"UPDATE Table_ SET etat = 'ON' WHERE ID_table = 3",
       "Tables occupées sans commande en cours : Salle 3"},
      {"UPDATE commande SET tcc = tcc + 1 WHERE n_commande = 7", "n'est pas HT + TVA - remise, n° : 7"},
      {"UPDATE commande SET tcc = NULL WHERE n_commande = 7", "n'est pas HT + TVA - remise, n° : 7"},
      {"UPDATE commande SET n_commande = NULL WHERE n_commande = 7", "Commandes sans numéro"},
      {"UPDATE commande SET tcc = 0", "1, 2, 3, 4, 5 et 295 autres"},
      {"DROP TABLE Achat", "La table Achat manque"},
      {"ALTER TABLE client DROP COLUMN emial", "La colonne emial de client manque"},
      {"ALTER TABLE client RENAME COLUMN emial TO email", "La colonne emial de client manque"},
      {"ALTER TABLE article DROP COLUMN qte_min; ALTER TABLE article ADD COLUMN qte_min INTEGER",
       "La colonne prix_vente de article n'est pas à sa place"},
      {"DROP INDEX cle_article; UPDATE article SET code_barre = '1' WHERE code_barre = '2'",
       "Clés en double dans article : 1"},
      {"DROP INDEX cle_article", "Rien ne garde la clé code_barre de article"},
      {"DROP INDEX cle_article; CREATE UNIQUE INDEX x ON article (code_barre) WHERE desto = 'OUI'",
       "Rien ne garde la clé code_barre de article"},
      {"DROP INDEX relation_commande_ligne", "L'index relation_commande_ligne manque"},
      {"ALTER TABLE commande DROP COLUMN remise; ALTER TABLE commande ADD COLUMN remise REAL",
       "La colonne remise de commande n'a pas sa valeur par défaut"},
      {"ALTER TABLE utilisateur DROP COLUMN prenom; ALTER TABLE utilisateur ADD COLUMN prenom TEXT(80)",
       "La colonne prenom de utilisateur n'a pas de largeur"},
      {"UPDATE commande SET HT = 'beaucoup', tcc = NULL WHERE n_commande = 7", "commande.HT, lignes : 7"},
      {"UPDATE commande SET date_commande = '22/11/2026' WHERE n_commande = 7",
       "commande.date_commande, lignes : 7"},
      {"UPDATE commande SET date_commande = '2026' WHERE n_commande = 7",
       "commande.date_commande, lignes : 7"},
      {"UPDATE article SET qte_stock = 2.5 WHERE rid = 9", "article.qte_stock, lignes : 9"},
      {"PRAGMA ignore_check_constraints = ON; UPDATE commande SET login = '12345' WHERE n_commande = 7",
       "commande.login, lignes : 7"},
      {"DELETE FROM TVA", "La table TVA doit avoir une ligne"},
      {"INSERT INTO TVA VALUES (2, 9, 'OUI')", "La table TVA doit avoir une ligne"},
      {"DELETE FROM utilisateur", "Il n'y a aucun compte"},
      {"UPDATE tavoline_store SET valeur = '2' WHERE cle = 'version'", "La version de la base est « 2 »"},
      {"DELETE FROM tavoline_store WHERE cle = 'version'", "La version de la base est «  »"},
      {"DELETE FROM tavoline_store WHERE cle = 'mot_de_passe'", "ne porte pas de mot de passe"},
      {"DROP TABLE tavoline_store", "La fiche de la base (tavoline_store) manque"},
      {"PRAGMA application_id = 7", "L'en-tête ne dit pas que c'est une base Tavoline"},
      {"PRAGMA journal_mode = DELETE", "Le journal partagé (WAL) n'est pas en place"},
  };
  for (const auto& fault : faults) {
    std::filesystem::copy_file(whole, file(), std::filesystem::copy_options::overwrite_existing);
    plant(file(), fault.plant);
    EXPECT_THAT(checkStore(file()), Contains(HasSubstr(fault.finding))) << fault.plant;
  }
}

TEST_F(CheckTest, FindsDamagedPages) {
  std::fstream store(file(), std::ios::binary | std::ios::in | std::ios::out);
  store.seekp(static_cast<std::streamoff>(std::filesystem::file_size(file()) / 2 / 4096 * 4096));
  store << std::string(4096, '\xff');
  store.close();
  EXPECT_EQ(tool({"check", file()}), 1);
  EXPECT_THAT(said, HasSubstr("abîmé"));
}

TEST_F(CheckTest, SaysWhatAForeignFileIs) {
  struct {
    std::string content;
    const char* finding;
  } const files[] = {{"", "vide"},
                     {std::string("\0\1\0\0Standard Jet DB\0", 20), "Jet"},
                     {"postgresql://caisse/tavoline\n", "serveur"},
                     {"Bonjour", "pas une base SQLite"}};
  for (const auto& foreign : files) {
    std::ofstream(file("foreign"), std::ios::binary) << foreign.content;
    EXPECT_EQ(tool({"check", file("foreign")}), 1);
    EXPECT_THAT(said, HasSubstr(foreign.finding));
    EXPECT_EQ(bytes(file("foreign")), foreign.content);
  }
  EXPECT_EQ(tool({"check", file("absent")}), 1);
}

TEST_F(CheckTest, ChangesNothing) {
  const auto alone = content();
  EXPECT_EQ(tool({"check", file()}), 0) << said;
  EXPECT_EQ(content(), alone);

  // A workstation at work: what it committed is seen, its log stays where it is, and it goes on.
  Database workstation(file(), Database::Mode::Create);
  workstation.execute("UPDATE Table_ SET etat = 'ON', n_commande = 0 WHERE ID_table = 1");
  const std::string store = bytes(file()), log = bytes(file() + "-wal");
  EXPECT_EQ(tool({"check", file()}), 1);
  EXPECT_EQ(bytes(file()), store);
  EXPECT_EQ(bytes(file() + "-wal"), log);
  workstation.execute("UPDATE Table_ SET etat = 'OFF' WHERE ID_table = 1");
  EXPECT_EQ(tool({"check", file()}), 0) << said;
}

}  // namespace
}  // namespace tavoline::tool
