#include "data/schema/Schema.h"

#include <algorithm>
#include <stdexcept>

namespace tavoline::schema {
namespace {

constexpr Column text(std::string_view name, int width = 0) {
  return {name, FieldType::Text, width};
}
constexpr Column integer(std::string_view name) {
  return {name, FieldType::Integer};
}
constexpr Column real(std::string_view name) {
  return {name, FieldType::Float};
}
constexpr Column dateTime(std::string_view name) {
  return {name, FieldType::DateTime};
}
constexpr Column blob(std::string_view name) {
  return {name, FieldType::Blob};
}

// Indexes serve the statements and the filters that meet tables with a history; a table of a few dozen rows
// is read whole faster. None begins with a column that has two or three values over the whole history
// (`etat_commande` alone, `commande.id_caisse`): without statistics an engine would prefer its equality to a
// range of dates and read all orders.
//
// A text without a width takes what it is given: nothing but the columns that copy it limits it.
std::vector<Table> makeTables() {
  return {
      {"article",
       "code_barre",
       {text("code_barre"), text("designation_article", 130), integer("id_categorie"), integer("qte_min"),
        integer("qte_stock"), real("prix_achat"), real("prix_vente"), text("desto"), text("autre"),
        blob("image")},
       {{"article_designation", {"designation_article"}}}},
      {"type", "code", {integer("code"), text("Type_Produit", 30)}, {}},
      {"TVA", "", {real("tva"), text("utilisation")}, {}},
      {"Fournisseur",
       "code_fournisseur",
       {text("code_fournisseur", 25), text("nom_fournisseur", 30), text("adresse", 50),
        text("n_telephone", 25), integer("Nbr_facture"), text("mail", 80), text("observation", 150)},
       {}},
      {"client",
       "code_client",
       {text("code_client", 25), text("nom_client", 25), text("Prenom_client", 25), text("Telephone", 30),
        text("adresse", 130), text("emial", 80), dateTime("date_creation"), integer("nbr_vente"),
        real("total_paiment"), real("total_creadit")},
       {}},
      // A login may be wider here than in the columns that copy it: the copy is then refused.
      {"utilisateur",
       "login",
       {text("login"), text("mot_pase"), text("nom"), text("prenom"), text("role"), blob("image")},
       {}},
      // The numbers of the log and of the closings may repeat (a second login of the day by a waiter, a
      // closing after one was deleted); nothing looks a row up by them, and to refuse it would stop the
      // waiter or the closing.
      {"operation",
       "",
       {integer("n_"), text("code_utilisateur"), text("nom"), text("prenom"), text("fonction"),
        text("id_caisse_active"), dateTime("date_sortie"), dateTime("heure_sortie")},
       {{"operation_numero", {"n_"}}}},
      {"Endroit", "ID_endroit", {integer("ID_endroit"), text("Endoit")}, {}},
      {"Table_",
       "ID_table",
       {integer("ID_table"), text("table", 80), text("endroit"), integer("id_endroit"), text("etat"),
        text("control"), integer("n_commande")},
       {{"Table__table", {"table"}}}},
      {"commande",
       "n_commande",
       {text("n_table", 20),
        text("table", 80),
        {"remise", FieldType::Float, 0, "0"},
        real("remi"),
        text("commentaire", 150),
        text("etat_commande", 50),
        real("HT"),
        real("TVA"),
        real("tcc"),
        text("login", 4),
        integer("n_commande"),
        text("code_client", 40),
        text("client", 120),
        dateTime("date_commande"),
        text("id_caisse", 20),
        text("en_caisser", 5),
        integer("J"),
        integer("M"),
        integer("A")},
       {{"commande_date", {"date_commande"}},
        {"commande_a_cloturer", {"en_caisser", "etat_commande", "date_commande"}},
        // The last two columns answer the totals of a period from the index alone.
        {"commande_periode", {"A", "M", "J", "etat_commande", "tcc"}},
        {"commande_encours", {"etat_commande"}, "\"etat_commande\" = 'Encours'"}}},
      {"relation_commande",
       "",
       {integer("n_commande"), text("code_article"), text("article", 120), integer("qte"), real("prix"),
        real("total")},
       {{"relation_commande_ligne", {"n_commande", "code_article"}}}},
      {"facture_achat",
       "N_facture",
       {integer("N_facture"), dateTime("date_facture"), text("code_fournisseur", 25),
        text("nom_fournisseur", 25), real("HT"), real("TVA"), real("TCC"), text("obs", 150),
        text("login", 20), text("en_caisse", 3), real("MONTANT_VERSE"), real("MONTANT_RESTE"),
        text("id_caisse", 10), integer("J"), integer("M"), integer("A")},
       {}},
      {"Achat",
       "",
       {integer("n_facture"), text("code_barre"), text("article"), integer("qte_achat"), real("prix_achat"),
        real("TOTAL")},
       {{"Achat_facture", {"n_facture"}}}},
      {"caisse",
       "ID_caise",
       {text("ID_caise", 20), text("nom_caisse", 50), real("solde"), dateTime("date_creation"),
        text("general", 4), text("select", 4)},
       {}},
      {"acce_caisse",
       "",
       {text("id_caisse"), text("nom_caisse"), text("login", 4), text("nom_utilisateur"),
        dateTime("date_affectaion"), text("commentaire"), text("general")},
       {}},
      {"caise",
       "",
       {integer("n_caise"), dateTime("date_lancement"), text("login", 10), dateTime("date_debut"),
        dateTime("date_fin"), real("total_caise"), real("prelevement_caise"), real("ecat_caise"),
        text("justification", 150), text("id_caisse", 20), real("fond_caisse"), real("total_recettes"),
        real("solde_caisse"), integer("J"), integer("M"), integer("A"), real("total_depense")},
       {{"caise_numero", {"n_caise"}}}},
      {"depence",
       "ID_depence",
       {integer("ID_depence"), dateTime("date_depense"), text("type_depnce", 100), real("montant_dep"),
        text("login", 4), text("n_fac", 30), blob("image_fac"), text("id_utilisateur", 4),
        text("nom_uilisateur", 80), text("id_caisse", 10), integer("J"), integer("M"), integer("A"),
        text("code_fournisseur", 25), text("fournissur", 80), text("en_caisser", 3)},
       {{"depence_date", {"date_depense"}}, {"depence_periode", {"A", "M", "J"}}}},
  };
}

}  // namespace

const Column* Table::find(std::string_view column) const {
  const auto found =
      std::find_if(columns.begin(), columns.end(), [&](const Column& c) { return c.name == column; });
  return found == columns.end() ? nullptr : &*found;
}

std::string widthConstraint(const Table& table, const Column& column) {
  return "largeur_" + std::string(table.name) + '_' + std::string(column.name) + '_' +
         std::to_string(column.width);
}

std::string keyIndex(const Table& table) {
  return "cle_" + std::string(table.name);
}

const std::vector<Table>& tables() {
  static const std::vector<Table> all = makeTables();
  return all;
}

const Table& table(std::string_view name) {
  for (const Table& candidate : tables())
    if (candidate.name == name) return candidate;
  throw std::out_of_range("no table " + std::string(name));
}

}  // namespace tavoline::schema
