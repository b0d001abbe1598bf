#include "tools/store/StoppedOrders.h"

namespace tavoline::tool {
namespace {

// The closing of an order writes its total, then the desk, then the table: where a finished order with a
// total still has its table, it stopped between the two. The desk should hold the float of its last closing
// and the orders finished since, less the expenses since; [trop] is what it holds above that. A supplier paid
// from the desk leaves no date, and of two workstations at one desk one loses a sale now and then: then it
// tells nothing.
constexpr std::string_view kStopped =
    "SELECT CAST([n_commande] AS TEXT) || ' (' || replace(CAST([tcc] AS TEXT), '.', ',') || ' DA, caisse ' "
    "|| coalesce([id_caisse], '') || ')' FROM (SELECT [commande].[n_commande], [commande].[tcc], "
    "[commande].[id_caisse], [caisse].[solde] - [caise].[fond_caisse] - (SELECT coalesce(sum([o].[tcc]), 0) "
    "FROM [commande] AS [o] WHERE [o].[id_caisse] = [caisse].[ID_caise] AND [o].[en_caisser] = 'no' AND "
    "[o].[etat_commande] = 'Terminer') + (SELECT coalesce(sum([montant_dep]), 0) FROM [depence] WHERE "
    "[depence].[id_caisse] = [caisse].[ID_caise] AND [depence].[type_depnce] <> 'Perte' AND "
    "[depence].[date_depense] >= [caise].[date_fin]) AS [trop] FROM [Table_] JOIN [commande] ON "
    "[commande].[n_commande] = [Table_].[n_commande] LEFT JOIN [caisse] ON [caisse].[ID_caise] = "
    "[commande].[id_caisse] LEFT JOIN [caise] ON [caise].[rid] = (SELECT max([c].[rid]) FROM [caise] AS [c] "
    "WHERE [c].[id_caisse] = [caisse].[ID_caise]) WHERE [Table_].[etat] = 'ON' AND "
    "[commande].[etat_commande] "
    "= 'Terminer' AND [commande].[tcc] IS NOT NULL) AS [arret] WHERE ";

struct Side {
  std::string_view sentence, condition;
};

constexpr Side kSides[] = {
    {"Commandes terminées dont la caisse n'a pas été créditée (ouvrez leur table et touchez « Cloturer la "
     "Table » : elle le sera), n° : ",
     "abs([trop] + [tcc]) < 0.005 AND abs([trop]) >= 0.005"},
    {"Commandes terminées et créditées dont la table n'est pas libérée (ouvrez leur table et touchez « "
     "Cloturer la Table », puis retranchez le montant du solde de la caisse, qui l'aura reçu deux fois), n° "
     ": ",
     "abs([trop]) < 0.005"},
    {"Commandes terminées dont la table n'est pas libérée, et dont rien ne dit si la caisse a été créditée "
     "(comptez-la ; ouvrez leur table et touchez « Cloturer la Table », puis, si elle l'était déjà, "
     "retranchez le montant de son solde), n° : ",
     "[trop] IS NULL OR (abs([trop]) >= 0.005 AND abs([trop] + [tcc]) >= 0.005)"},
};

}  // namespace

void checkStoppedOrders(Findings& findings, const Engine& engine, const Ask& ask) {
  for (const Side& side : kSides) {
    std::string query(kStopped);
    query += side.condition;
    report(findings, std::string(side.sentence), ask(inWordsOf(engine, query)));
  }
}

}  // namespace tavoline::tool
