#include "data/sql/Statements.h"

#include <stdexcept>
#include <string>

namespace tavoline::test {

const std::vector<NamedStatement>& statements() {
  static const std::vector<NamedStatement> all = {
      {"Article", "select * from article order by code_barre"},
      {"type_produit", "select * from type"},
      {"Fournisseur", "select * from Fournisseur"},
      {"Client", "select * from client"},
      {"A", "SELECT Count(article.code_barre) AS A FROM article;"},
      {"TVA", "select * from TVA"},
      {"operation", "select * from operation"},
      {"utilisateur", "select * from utilisateur"},
      {"Endroit", "select * from Endroit"},
      {"Table_", "select * from Table_"},
      {"T", "SELECT Max(table_.ID_table) AS T FROM table_;"},
      {"E", "SELECT Max(endroit.id_endroit) AS E FROM endroit;"},
      {"commande", "select * from commande"},
      {"C", "SELECT max(commande.n_commande) AS C FROM commande;"},
      {"relation_commande", "select * from relation_commande"},
      {"relation_commande1", "select * from relation_commande"},
      {"sum_commande",
       "SELECT relation_commande.n_commande, Sum(relation_commande.total) AS SumOftotal FROM "
       "relation_commande GROUP BY relation_commande.n_commande;"},
      {"imp_commande",
       "SELECT commande.n_commande, commande.n_table, commande.table, commande.date_commande, "
       "commande.remise, commande.remi, commande.HT, commande.TVA, commande.tcc, "
       "relation_commande.code_article, relation_commande.article, relation_commande.qte, "
       "relation_commande.prix, relation_commande.total, utilisateur.nom, utilisateur.prenom, "
       "utilisateur.role, commande.code_client, commande.client FROM relation_commande INNER "
       "JOIN (commande INNER JOIN utilisateur ON commande.login = utilisateur.login) ON "
       "relation_commande.n_commande = commande.n_commande;"},
      {"imp_facture_vente",
       "SELECT commande.n_commande, commande.n_table, commande.table, commande.date_commande, "
       "commande.remise, commande.remi, commande.HT, commande.TVA, commande.tcc, "
       "relation_commande.code_article, relation_commande.article, relation_commande.qte, "
       "relation_commande.prix, relation_commande.total, utilisateur.nom, utilisateur.prenom, "
       "utilisateur.role, commande.code_client, commande.client, client.nom_client, "
       "client.Prenom_client, client.Telephone FROM (relation_commande INNER JOIN (commande "
       "INNER JOIN utilisateur ON commande.login = utilisateur.login) ON "
       "relation_commande.n_commande = commande.n_commande) INNER JOIN client ON "
       "commande.code_client = client.code_client;"},
      {"facture_achat", "select * from facture_achat"},
      {"F", "SELECT max(facture_achat.N_facture) AS F FROM facture_achat;"},
      {"Achat", "select * from Achat"},
      {"counting",
       "SELECT achat.n_facture, Sum(achat.TOTAL) AS SumOfTOTAL FROM achat INNER JOIN "
       "facture_achat ON achat.n_facture = facture_achat.N_facture GROUP BY achat.n_facture;"},
      {"imp_fac_achat",
       "SELECT facture_achat.N_facture, facture_achat.date_facture, "
       "facture_achat.code_fournisseur, facture_achat.nom_fournisseur, fournisseur.adresse, "
       "fournisseur.n_telephone, facture_achat.HT, facture_achat.TVA, facture_achat.TCC, "
       "facture_achat.MONTANT_VERSE, facture_achat.MONTANT_RESTE, facture_achat.obs, "
       "facture_achat.login, achat.code_barre, achat.article, achat.prix_achat, "
       "achat.qte_achat, achat.TOTAL FROM (facture_achat INNER JOIN fournisseur ON "
       "facture_achat.code_fournisseur = fournisseur.code_fournisseur) INNER JOIN achat ON "
       "facture_achat.N_facture = achat.n_facture;"},
      {"Caise", "select * from caise order by n_caise"},
      {"CS", "SELECT Count(Caise.n_caise) AS CS FROM  caise;"},
      {"min", "SELECT Min(commande.date_commande) AS MinOfdate_commande FROM commande"},
      {"last",
       "SELECT First(commande.date_commande) AS  LastOfdate_fin FROM commande WHERE "
       "(((commande.en_caisser)='no')) and commande.etat_commande='Terminer'"},
      {"xx1",
       "SELECT relation_commande.article,  Sum(relation_commande.qte) AS SumOfqte, "
       "Sum(relation_commande.prix) AS SumOfprix, Sum(relation_commande.total) AS SumOftotal "
       "FROM (type INNER JOIN article ON type.code = article.id_categorie) INNER JOIN "
       "(relation_commande INNER JOIN commande ON relation_commande.n_commande = "
       "commande.n_commande) ON article.code_barre = relation_commande.code_article WHERE "
       "commande.date_commande  Between :x and :y and commande.etat_commande='Terminer' and "
       "commande.en_caisser ='no' GROUP BY relation_commande.article"},
      {"null4",
       "SELECT type.Type_Produit, Sum(relation_commande.qte) AS SumOfqte, "
       "Sum(relation_commande.prix) AS SumOfprix, Sum(relation_commande.total) AS SumOftotal "
       "FROM (type INNER JOIN article ON type.code = article.id_categorie) INNER JOIN "
       "(relation_commande INNER JOIN commande ON relation_commande.n_commande = "
       "commande.n_commande) ON article.code_barre = relation_commande.code_article WHERE "
       "commande.date_commande  Between :x and :y  and commande.etat_commande='Terminer' and "
       "commande.en_caisser ='no' GROUP BY type.Type_Produit"},
      {"xxx1",
       "SELECT relation_commande.article,  Sum(relation_commande.qte) AS SumOfqte, "
       "Sum(relation_commande.prix) AS SumOfprix, Sum(relation_commande.total) AS SumOftotal "
       "FROM (type INNER JOIN article ON type.code = article.id_categorie) INNER JOIN "
       "(relation_commande INNER JOIN commande ON relation_commande.n_commande = "
       "commande.n_commande) ON article.code_barre = relation_commande.code_article WHERE "
       "commande.date_commande  Between :x and :y and commande.login like :z and "
       "commande.en_caisser ='no' GROUP BY relation_commande.article"},
      {"sum_x",
       "SELECT Sum(commande.tcc) AS SumOftcc FROM commande WHERE commande.date_commande  "
       "Between :x and :y and commande.en_caisser ='no'"},
      {"x1",
       "SELECT commande.n_commande, commande.n_table, commande.table, commande.date_commande, "
       "commande.remise, commande.remi, commande.commentaire, commande.HT, commande.TVA, "
       "commande.tcc, commande.login, commande.code_client, commande.client FROM commande WHERE "
       "(((commande.etat_commande)='Terminer')) and commande.en_caisser ='no'"},
      {"x2",
       "SELECT commande.n_commande, commande.n_table, commande.table, commande.remise, "
       "commande.remi, commande.commentaire, commande.HT, commande.TVA, commande.tcc, "
       "commande.code_client, commande.client FROM commande WHERE "
       "(((commande.etat_commande)='Terminer')) and commande.date_commande  Between :x and :y  "
       "and commande.login like :z and commande.en_caisser ='no'"},
      {"Caisse", "select * from Caisse"},
      {"acce_caisse", "select * from acce_caisse"},
      {"CSS", "SELECT Count(caisse.id_caise) AS CSS FROM caisse;"},
      {"Count_accee",
       "SELECT Count(acce_caisse.id_caisse) AS CountOfid_caisse, acce_caisse.login FROM "
       "acce_caisse WHERE acce_caisse.general='NON' GROUP BY acce_caisse.login;"},
      {"xx2",
       "SELECT relation_commande.article,  Sum(relation_commande.qte) AS SumOfqte, "
       "Sum(relation_commande.prix) AS SumOfprix, Sum(relation_commande.total) AS SumOftotal "
       "FROM (type INNER JOIN article ON type.code = article.id_categorie) INNER JOIN "
       "(relation_commande INNER JOIN commande ON relation_commande.n_commande = "
       "commande.n_commande) ON article.code_barre = relation_commande.code_article WHERE "
       "commande.date_commande  Between :x and :y and commande.etat_commande='Terminer' and "
       "commande.id_caisse like :c and commande.en_caisser ='no' GROUP BY "
       "relation_commande.article"},
      {"Null44",
       "SELECT type.Type_Produit, Sum(relation_commande.qte) AS SumOfqte, "
       "Sum(relation_commande.prix) AS SumOfprix, Sum(relation_commande.total) AS SumOftotal "
       "FROM (type INNER JOIN article ON type.code = article.id_categorie) INNER JOIN "
       "(relation_commande INNER JOIN commande ON relation_commande.n_commande = "
       "commande.n_commande) ON article.code_barre = relation_commande.code_article WHERE "
       "commande.date_commande  Between :x and :y  and commande.etat_commande='Terminer' and "
       "commande.id_caisse like :c and commande.en_caisser ='no' GROUP BY type.Type_Produit"},
      {"xxx3",
       "SELECT relation_commande.article,  Sum(relation_commande.qte) AS SumOfqte, "
       "Sum(relation_commande.prix) AS SumOfprix, Sum(relation_commande.total) AS SumOftotal "
       "FROM (type INNER JOIN article ON type.code = article.id_categorie) INNER JOIN "
       "(relation_commande INNER JOIN commande ON relation_commande.n_commande = "
       "commande.n_commande) ON article.code_barre = relation_commande.code_article WHERE "
       "commande.date_commande  Between :x and :y and commande.login like :z and "
       "commande.id_caisse like :c and commande.en_caisser ='no' GROUP BY "
       "relation_commande.article"},
      {"sum_x2",
       "SELECT Sum(commande.tcc) AS SumOftcc FROM commande WHERE commande.date_commande  "
       "Between :x and :y and commande.id_caisse like :c and commande.en_caisser ='no'"},
      {"x22",
       "SELECT commande.n_commande, commande.n_table, commande.table, commande.date_commande, "
       "commande.remise, commande.remi, commande.commentaire, commande.HT, commande.TVA, "
       "commande.tcc, commande.login, commande.code_client, commande.client FROM commande WHERE "
       "(((commande.etat_commande)='Terminer')) and commande.id_caisse like :c and "
       "commande.en_caisser ='no'"},
      {"x33",
       "SELECT commande.n_commande, commande.n_table, commande.table, commande.remise, "
       "commande.remi, commande.commentaire, commande.HT, commande.TVA, commande.tcc, "
       "commande.code_client, commande.client FROM commande WHERE "
       "(((commande.etat_commande)='Terminer')) and commande.date_commande  Between :x and :y  "
       "and commande.login like :z and commande.id_caisse like :c and commande.en_caisser ='no'"},
      {"lastt", "SELECT Last(caise.date_fin) AS LastOfdate_fin FROM caise where caise.id_caisse like :c"},
      {"X",
       "update commande set commande.en_caisser='yes' where commande.date_commande between :x "
       "and :y and commande.id_caisse like :z and commande.etat_commande='Terminer'"},
      {"XX",
       "update commande set commande.en_caisser='yes' where commande.date_commande between :x "
       "and :y and commande.etat_commande='Terminer'"},
      {"D", "SELECT max(depence.id_depence) AS D FROM depence;"},
      {"Depence", "select * from Depence"},
      {"stat_caisse",
       "SELECT caisse.nom_caisse, Sum(caisse.solde) AS SumOfsolde FROM caisse GROUP BY "
       "caisse.nom_caisse;"},
      {"XXX", "update table_ set table_.control='open'"},
      {"S_01",
       "SELECT commande.J, commande.M, commande.A, Sum(commande.tcc) AS SumOftcc FROM commande "
       "WHERE (((commande.etat_commande)=\"Terminer\")) GROUP BY commande.J, commande.M, "
       "commande.A;"},
      {"D_01",
       "SELECT depence.J, depence.M, depence.A, Sum(depence.montant_dep) AS SumOfmontant_dep "
       "FROM caisse INNER JOIN depence ON caisse.ID_caise = depence.id_caisse WHERE "
       "(((caisse.general)=\"NON\")) GROUP BY depence.J, depence.M, depence.A;"},
      {"Calcul_dep",
       "SELECT Sum(depence.montant_dep) AS SumOfmontant_dep FROM caisse INNER JOIN depence ON "
       "caisse.ID_caise = depence.id_caisse WHERE caisse.general='NON'  AND "
       "depence.date_depense Between :x And :y"},
      {"best1",
       "SELECT commande.M, commande.A, Sum(commande.tcc) AS SumOftcc, type.Type_Produit FROM "
       "type INNER JOIN (article INNER JOIN (relation_commande INNER JOIN commande ON "
       "relation_commande.n_commande = commande.n_commande) ON article.code_barre = "
       "relation_commande.code_article) ON type.code = article.id_categorie WHERE "
       "(((commande.etat_commande)=\"Terminer\")) GROUP BY  commande.M, commande.A, "
       "type.Type_Produit;"},
      {"best2",
       "SELECT  commande.M, commande.A, Sum(commande.tcc) AS SumOftcc, "
       "article.designation_article FROM article INNER JOIN (relation_commande INNER JOIN "
       "commande ON relation_commande.n_commande = commande.n_commande) ON article.code_barre = "
       "relation_commande.code_article WHERE (((commande.etat_commande)=\"Terminer\")) GROUP BY "
       "commande.M, commande.A, article.designation_article;"},
      {"sum_recette",
       "SELECT Sum(commande.tcc) AS SumOftcc FROM commande WHERE "
       "(((commande.etat_commande)=\"Terminer\")) and commande.J Between :x And :y AND commande.M "
       "Between :z And :m AND commande.A Between :n And :l"},
      {"sum_depense",
       "SELECT Sum(depence.montant_dep) AS SumOfmontant_dep FROM caisse INNER JOIN depence ON "
       "caisse.ID_caise = depence.id_caisse WHERE caisse.general=\"NON\" and depence.J Between :x "
       "And :y AND depence.M Between :z And :m AND depence.A Between :n And :l"},
      {"T_p", "SELECT max(type.code) AS tp FROM type;"},
      {"X_D",
       "update depence set depence.en_caisser='yes' where depence.date_depense between :x and "
       ":y and comdepencemande.id_caisse like :z"},
      {"op", "SELECT Max(operation.n_) AS op FROM operation;"},
  };
  return all;
}

std::string_view statementOf(std::string_view dataset) {
  for (const NamedStatement& statement : statements()) {
    if (statement.name == dataset) return statement.text;
  }
  throw std::out_of_range(std::string(dataset));
}

}  // namespace tavoline::test
