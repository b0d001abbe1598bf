#include "tools/store/RowRules.h"

#include <algorithm>
#include <iterator>

#include "data/schema/Schema.h"
#include "tools/store/StoppedOrders.h"

namespace tavoline::tool {
namespace {

/// A statement that finds the rows which break the rule, each as one text, and the sentence about them. A
/// name stands in [brackets], for the engine to quote.
struct Rule {
  std::string_view sentence;
  std::string_view query;
};

constexpr Rule kRules[] = {
    {"Lignes de commande sans commande, n° : ",
     "SELECT DISTINCT [n_commande] FROM [relation_commande] WHERE [n_commande] IS NULL OR "
     "NOT EXISTS (SELECT 1 FROM [commande] WHERE [commande].[n_commande] = "
     "[relation_commande].[n_commande])"},
    {"Lignes d'achat sans facture, n° : ",
     "SELECT DISTINCT [n_facture] FROM [Achat] WHERE [n_facture] IS NULL OR "
     "NOT EXISTS (SELECT 1 FROM [facture_achat] WHERE [facture_achat].[N_facture] = [Achat].[n_facture])"},
    {"Tables occupées sans commande en cours : ",
     "SELECT [table] FROM [Table_] WHERE [etat] = 'ON' AND NOT EXISTS (SELECT 1 FROM [commande] "
     "WHERE [commande].[n_commande] = [Table_].[n_commande] AND ([etat_commande] = 'Encours' OR "
     "([etat_commande] = 'Terminer' AND [tcc] IS NOT NULL)))"},
    {"Commandes terminées dont le total n'est pas HT + TVA - remise, n° : ",
     "SELECT [n_commande] FROM [commande] WHERE [etat_commande] = 'Terminer' AND "
     "coalesce(abs([tcc] - ([HT] + [TVA] - [remi])) >= 0.005, 1 = 1)"},
    // A closing writes one thing after the other: its row, the row's day, the orders, the desk, the house
    // desk, the loss. An expense: its row, the row's day, the desk.
    {"Clôtures restées à mi-chemin (supprimez leur ligne du journal, puis refaites-les), n° : ",
     "SELECT [n_caise] FROM [caise] WHERE ([date_lancement] IS NOT NULL AND [J] IS NULL) OR EXISTS (SELECT 1 "
     "FROM [commande] WHERE [commande].[en_caisser] = 'no' AND [commande].[etat_commande] = 'Terminer' AND "
     "[commande].[id_caisse] = [caise].[id_caisse] AND [commande].[date_commande] BETWEEN "
     "[caise].[date_debut] AND "
     "[caise].[date_fin])"},
    {"Caisses dont le solde n'est pas le fond de leur dernière clôture, sans commande ni dépense depuis (si "
     "aucun fournisseur n'en a été payé, écrivez-y ce fond, et vérifiez que la caisse de maison a reçu le "
     "prélèvement) : ",
     "SELECT [caisse].[ID_caise] FROM [caisse], [caise] WHERE [caise].[rid] = (SELECT max([rid]) FROM "
     "[caise] WHERE [caise].[id_caisse] = [caisse].[ID_caise]) AND [caise].[J] IS NOT NULL AND "
     "abs([caisse].[solde] - "
     "[caise].[fond_caisse]) >= 0.005 AND NOT EXISTS (SELECT 1 FROM [commande] WHERE [commande].[id_caisse] "
     "= [caisse].[ID_caise] AND [commande].[en_caisser] = 'no' AND [commande].[etat_commande] = 'Terminer') "
     "AND NOT EXISTS (SELECT 1 FROM [depence] WHERE [depence].[id_caisse] = [caisse].[ID_caise] AND "
     "[depence].[type_depnce] <> 'Perte' AND [depence].[date_depense] >= [caise].[date_fin])"},
    {"Clôtures dont le manque n'est pas une dépense « Perte » (vérifiez aussi que la caisse de maison a reçu "
     "le prélèvement), n° : ",
     "SELECT [n_caise] FROM [caise] WHERE [ecat_caise] < 0 AND [J] IS NOT NULL AND [rid] IN (SELECT "
     "max([rid]) FROM [caise] GROUP BY [id_caisse]) AND NOT EXISTS (SELECT 1 FROM [depence] WHERE "
     "[depence].[type_depnce] = "
     "'Perte' AND [depence].[id_caisse] = [caise].[id_caisse] AND abs([depence].[montant_dep] + "
     "[caise].[ecat_caise]) < "
     "0.005 AND [depence].[date_depense] >= [caise].[date_fin])"},
    {"Dépenses restées à mi-chemin, dont la caisse n'a pas été débitée (supprimez-les, puis saisissez-les de "
     "nouveau), n° : ",
     // Or the desk holds as much too much as its last expense took, by its last closing and what came since.
     "SELECT [ID_depence] FROM [depence] WHERE ([J] IS NULL AND [date_depense] IS NOT NULL) OR [rid] IN ("
     "SELECT [last].[rid] FROM [depence] AS [last], [caisse], [caise] WHERE [last].[rid] IN (SELECT "
     "max([rid]) FROM [depence] WHERE [type_depnce] <> 'Perte' GROUP BY [id_caisse]) AND [caisse].[ID_caise] "
     "= [last].[id_caisse] AND [caise].[rid] IN (SELECT max([rid]) FROM [caise] GROUP BY [id_caisse]) AND "
     "[caise].[id_caisse] = [last].[id_caisse] AND [last].[date_depense] >= [caise].[date_fin] AND "
     "[last].[montant_dep] > 0 AND abs([caisse].[solde] - [last].[montant_dep] - [caise].[fond_caisse] - "
     "coalesce((SELECT sum([tcc]) FROM [commande] WHERE [commande].[id_caisse] = [last].[id_caisse] AND "
     "[en_caisser] = 'no' AND [etat_commande] = 'Terminer'), 0) + (SELECT sum([montant_dep]) FROM [depence] "
     "WHERE [depence].[id_caisse] = [last].[id_caisse] AND [type_depnce] <> 'Perte' AND "
     "[depence].[date_depense] "
     ">= [caise].[date_fin])) < 0.005)"},
    {"Commandes sans numéro, lignes : ", "SELECT [rid] FROM [commande] WHERE [n_commande] IS NULL"},
};

}  // namespace

void append(Findings& findings, Findings more) {
  std::move(more.begin(), more.end(), std::back_inserter(findings));
}

std::string tellMissing(const Definition& definition) {
  if (definition.kind == Definition::Kind::Key)
    return "La clé " + definition.name +
           " manque ou n'est plus celle d'aujourd'hui : rien n'empêche les "
           "doubles. « tavoline-store upgrade » la remet.";
  return "L'index " + definition.name +
         " manque ou n'est plus celui d'aujourd'hui : la base sera lente. "
         "« tavoline-store upgrade » le remet.";
}

std::string inWordsOf(const Engine& engine, std::string_view query) {
  std::string words;
  while (true) {
    const std::size_t open = query.find('[');
    words += query.substr(0, open);
    if (open == query.npos) return words;
    const std::size_t close = query.find(']', open);
    words += engine.quotedName(query.substr(open + 1, close - open - 1));
    query.remove_prefix(close + 1);
  }
}

void report(Findings& findings, const std::string& sentence, const std::vector<std::string>& places) {
  constexpr std::size_t kShown = 5;
  if (places.empty()) return;
  std::string text = sentence;
  for (std::size_t i = 0; i < std::min(places.size(), kShown); ++i) text += (i ? ", " : "") + places[i];
  if (places.size() > kShown) text += " et " + std::to_string(places.size() - kShown) + " autres";
  findings.push_back(text + '.');
}

Findings checkKeys(const Engine& engine, const Ask& ask) {
  Findings findings;
  for (const schema::Table& table : schema::tables()) {
    if (table.key.empty()) continue;
    const std::string key = engine.quotedName(table.key);
    std::string question = "SELECT " + key + " FROM " + engine.quotedName(table.name);
    question.append(" WHERE ").append(key).append(" IS NOT NULL GROUP BY ").append(key);
    question.append(" HAVING count(*) > 1");
    report(findings, "Clés en double dans " + std::string(table.name) + " : ", ask(question));
  }
  return findings;
}

Findings checkRows(const Engine& engine, const Ask& ask) {
  Findings findings;
  for (const Rule& rule : kRules)
    report(findings, std::string(rule.sentence), ask(inWordsOf(engine, rule.query)));
  checkStoppedOrders(findings, engine, ask);
  if (ask(inWordsOf(engine, "SELECT 1 FROM [TVA] LIMIT 2")).size() != 1)
    findings.emplace_back("La table TVA doit avoir une ligne, et une seule.");
  if (ask(inWordsOf(engine, "SELECT 1 FROM [utilisateur] LIMIT 1")).empty())
    findings.emplace_back("Il n'y a aucun compte : personne ne peut ouvrir de session.");
  return findings;
}

}  // namespace tavoline::tool
