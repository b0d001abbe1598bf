#include "tools/store/RowRules.h"

#include <algorithm>

#include "data/schema/Schema.h"

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
     "WHERE [commande].[n_commande] = [Table_].[n_commande] AND [etat_commande] = 'Encours')"},
    {"Commandes terminées dont le total n'est pas HT + TVA - remise, n° : ",
     "SELECT [n_commande] FROM [commande] WHERE [etat_commande] = 'Terminer' AND "
     "coalesce(abs([tcc] - ([HT] + [TVA] - [remi])) >= 0.005, 1 = 1)"},
    {"Commandes sans numéro, lignes : ", "SELECT [rid] FROM [commande] WHERE [n_commande] IS NULL"},
};

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

}  // namespace

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
    report(findings, "Clés en double dans " + std::string(table.name) + " : ",
           ask("SELECT " + key + " FROM " + engine.quotedName(table.name) + " WHERE " + key +
               " IS NOT NULL GROUP BY " + key + " HAVING count(*) > 1"));
  }
  return findings;
}

Findings checkRows(const Engine& engine, const Ask& ask) {
  Findings findings;
  for (const Rule& rule : kRules)
    report(findings, std::string(rule.sentence), ask(inWordsOf(engine, rule.query)));
  if (ask(inWordsOf(engine, "SELECT 1 FROM [TVA] LIMIT 2")).size() != 1)
    findings.emplace_back("La table TVA doit avoir une ligne, et une seule.");
  if (ask(inWordsOf(engine, "SELECT 1 FROM [utilisateur] LIMIT 1")).empty())
    findings.emplace_back("Il n'y a aucun compte : personne ne peut ouvrir de session.");
  return findings;
}

}  // namespace tavoline::tool
