#pragma once

#include <initializer_list>
#include <memory>
#include <string_view>
#include <vector>

#include "data/dataset/DataSource.h"
#include "data/dataset/Dataset.h"

namespace tavoline {

/// The one data module: the connection, the named datasets in the order in which they open, and their
/// partners. No logic. Created second at start, lives until the process ends.
class TDM {
 public:
  static const char ConnectionString[];  ///< As every installation has it; file and password come from it.

  /// Opens the store that ConnectionString names, then every dataset but the actions. Throws StoreError,
  /// StatementError.
  TDM();
  explicit TDM(std::shared_ptr<Store> store);
  ~TDM();
  TDM(const TDM&) = delete;
  TDM& operator=(const TDM&) = delete;

  DataSource* Source(
      std::string_view name) const;            ///< A partner by name without regard to case; null if absent.
  Dataset* Find(std::string_view name) const;  ///< A dataset by its exact name; null if absent.
  const std::vector<Dataset*>& Datasets() const { return datasets_; }  ///< In the order of opening.
  // Several at once, in this order, all in one version of the store: a server is asked for it only once.
  void Reopen(std::initializer_list<Dataset*> all);
  void Refresh(std::initializer_list<Dataset*> all);
  std::string Advice() const;  ///< What whoever keeps the store should be told at the start; mostly empty.
  void Idle();         ///< When the user does nothing: lets go of versions and lets the store fold its log.
  void GestureDone();  ///< When a gesture has ended: the same where no quiet moment comes.
  Store& store() const { return *store_; }

 private:
  struct Named : Dataset {
    Named(TDM& dm, const char* name, const char* statement, std::vector<std::string> parameters = {});
  };
  struct Partner : DataSource {
    Partner(TDM& dm, const char* name, Dataset& dataset);
  };

  std::shared_ptr<Store> store_;
  std::shared_ptr<const Store::Reliever> reliever_;
  std::vector<Dataset*> datasets_;
  std::vector<DataSource*> partners_;

 public:
  Named Article{*this, "Article", "select * from article order by code_barre"};
  Partner DataSourceArticle{*this, "DataSourceArticle", Article};
  Named type_produit{*this, "type_produit", "select * from type"};
  Partner DataSourceType{*this, "DataSourceType", type_produit};
  Named Fournisseur{*this, "Fournisseur", "select * from Fournisseur"};
  Partner DataSourceFournisseur{*this, "DataSourceFournisseur", Fournisseur};
  Named Client{*this, "Client", "select * from client"};
  Partner DataSourceClient{*this, "DataSourceClient", Client};
  Named A{*this, "A", "SELECT Count(article.code_barre) AS A FROM article;"};
  Named TVA{*this, "TVA", "select * from TVA"};
  Partner DataSourceTVA{*this, "DataSourceTVA", TVA};
  Named operation{*this, "operation", "select * from operation"};
  Partner DataSourceoperation{*this, "DataSourceoperation", operation};
  Named utilisateur{*this, "utilisateur", "select * from utilisateur"};
  Partner DataSourceUtilisateur{*this, "DataSourceUtilisateur", utilisateur};
  Named Endroit{*this, "Endroit", "select * from Endroit"};
  Partner DataSourceEndroit{*this, "DataSourceEndroit", Endroit};
  Named Table_{*this, "Table_", "select * from Table_"};
  Partner DataSourceTable_{*this, "DataSourceTable_", Table_};
  Named T{*this, "T", "SELECT Max(table_.ID_table) AS T FROM table_;"};
  Partner DAta_t{*this, "DAta_t", T};
  Named E{*this, "E", "SELECT Max(endroit.id_endroit) AS E FROM endroit;"};
  Partner data_e{*this, "data_e", E};
  Named commande{*this, "commande", "select * from commande"};
  Partner DataSourceCommande{*this, "DataSourceCommande", commande};
  Named C{*this, "C", "SELECT max(commande.n_commande) AS C FROM commande;"};
  Partner DataSourceC{*this, "DataSourceC", C};
  Named relation_commande{*this, "relation_commande", "select * from relation_commande"};
  Partner DataSourcereRelation_commande{*this, "DataSourcereRelation_commande", relation_commande};
  Named relation_commande1{*this, "relation_commande1", "select * from relation_commande"};
  Partner DataSourcerelation_commande1{*this, "DataSourcerelation_commande1", relation_commande1};
  Named sum_commande{*this, "sum_commande",
                     "SELECT relation_commande.n_commande, Sum(relation_commande.total) AS SumOftotal FROM "
                     "relation_commande GROUP BY relation_commande.n_commande;"};
  Partner DataSourceSum_commande{*this, "DataSourceSum_commande", sum_commande};
  Named imp_commande{
      *this, "imp_commande",
      "SELECT commande.n_commande, commande.n_table, commande.table, commande.date_commande, "
      "commande.remise, commande.remi, commande.HT, commande.TVA, commande.tcc, "
      "relation_commande.code_article, relation_commande.article, relation_commande.qte, "
      "relation_commande.prix, relation_commande.total, utilisateur.nom, utilisateur.prenom, "
      "utilisateur.role, commande.code_client, commande.client FROM relation_commande INNER JOIN "
      "(commande INNER JOIN utilisateur ON commande.login = utilisateur.login) ON "
      "relation_commande.n_commande = commande.n_commande;"};
  Named imp_facture_vente{
      *this, "imp_facture_vente",
      "SELECT commande.n_commande, commande.n_table, commande.table, commande.date_commande, "
      "commande.remise, commande.remi, commande.HT, commande.TVA, commande.tcc, "
      "relation_commande.code_article, relation_commande.article, relation_commande.qte, "
      "relation_commande.prix, relation_commande.total, utilisateur.nom, utilisateur.prenom, "
      "utilisateur.role, commande.code_client, commande.client, client.nom_client, "
      "client.Prenom_client, client.Telephone FROM (relation_commande INNER JOIN (commande INNER JOIN "
      "utilisateur ON commande.login = utilisateur.login) ON relation_commande.n_commande = "
      "commande.n_commande) INNER JOIN client ON commande.code_client = client.code_client;"};
  Named facture_achat{*this, "facture_achat", "select * from facture_achat"};
  Partner DataSourceFacture_achat{*this, "DataSourceFacture_achat", facture_achat};
  Named F{*this, "F", "SELECT max(facture_achat.N_facture) AS F FROM facture_achat;"};
  Partner DataSourceF{*this, "DataSourceF", F};
  Named Achat{*this, "Achat", "select * from Achat"};
  Partner DataSourceAchat{*this, "DataSourceAchat", Achat};
  Named counting{
      *this, "counting",
      "SELECT achat.n_facture, Sum(achat.TOTAL) AS SumOfTOTAL FROM achat INNER JOIN facture_achat ON "
      "achat.n_facture = facture_achat.N_facture GROUP BY achat.n_facture;"};
  Named imp_fac_achat{
      *this, "imp_fac_achat",
      "SELECT facture_achat.N_facture, facture_achat.date_facture, facture_achat.code_fournisseur, "
      "facture_achat.nom_fournisseur, fournisseur.adresse, fournisseur.n_telephone, facture_achat.HT, "
      "facture_achat.TVA, facture_achat.TCC, facture_achat.MONTANT_VERSE, facture_achat.MONTANT_RESTE, "
      "facture_achat.obs, facture_achat.login, achat.code_barre, achat.article, achat.prix_achat, "
      "achat.qte_achat, achat.TOTAL FROM (facture_achat INNER JOIN fournisseur ON "
      "facture_achat.code_fournisseur = fournisseur.code_fournisseur) INNER JOIN achat ON "
      "facture_achat.N_facture = achat.n_facture;"};
  Named Caise{*this, "Caise", "select * from caise order by n_caise"};
  Partner DataSourceCaise{*this, "DataSourceCaise", Caise};
  Named CS{*this, "CS", "SELECT Count(Caise.n_caise) AS CS FROM caise;"};
  Partner DataSourceCS{*this, "DataSourceCS", CS};
  Named min{*this, "min", "SELECT Min(commande.date_commande) AS MinOfdate_commande FROM commande"};
  Named last{*this, "last",
             "SELECT First(commande.date_commande) AS LastOfdate_fin FROM commande WHERE "
             "(((commande.en_caisser)='no')) and commande.etat_commande='Terminer'"};
  Partner DataSourceLAST{*this, "DataSourceLAST", last};
  Named xx1{*this,
            "xx1",
            "SELECT relation_commande.article, Sum(relation_commande.qte) AS SumOfqte, "
            "Sum(relation_commande.prix) AS SumOfprix, Sum(relation_commande.total) AS SumOftotal FROM (type "
            "INNER JOIN article ON type.code = article.id_categorie) INNER JOIN (relation_commande INNER "
            "JOIN commande ON relation_commande.n_commande = commande.n_commande) ON article.code_barre = "
            "relation_commande.code_article WHERE commande.date_commande Between :x and :y and "
            "commande.etat_commande='Terminer' and commande.en_caisser ='no' GROUP BY "
            "relation_commande.article",
            {"SumOfqte", "SumOfprix", "SumOftotal", "x", "y"}};
  Named null4{*this,
              "null4",
              "SELECT type.Type_Produit, Sum(relation_commande.qte) AS SumOfqte, Sum(relation_commande.prix) "
              "AS SumOfprix, Sum(relation_commande.total) AS SumOftotal FROM (type INNER JOIN article ON "
              "type.code = article.id_categorie) INNER JOIN (relation_commande INNER JOIN commande ON "
              "relation_commande.n_commande = commande.n_commande) ON article.code_barre = "
              "relation_commande.code_article WHERE commande.date_commande Between :x and :y and "
              "commande.etat_commande='Terminer' and commande.en_caisser ='no' GROUP BY type.Type_Produit",
              {"x", "y"}};
  Partner DataSource3{*this, "DataSource3", null4};
  Named xxx1{
      *this,
      "xxx1",
      "SELECT relation_commande.article, Sum(relation_commande.qte) AS SumOfqte, "
      "Sum(relation_commande.prix) AS SumOfprix, Sum(relation_commande.total) AS SumOftotal FROM (type "
      "INNER JOIN article ON type.code = article.id_categorie) INNER JOIN (relation_commande INNER "
      "JOIN commande ON relation_commande.n_commande = commande.n_commande) ON article.code_barre = "
      "relation_commande.code_article WHERE commande.date_commande Between :x and :y and "
      "commande.login like :z and commande.en_caisser ='no' GROUP BY relation_commande.article",
      {"SumOfqte", "SumOfprix", "SumOftotal", "x", "y", "z"}};
  Named sum_x{
      *this,
      "sum_x",
      "SELECT Sum(commande.tcc) AS SumOftcc FROM commande WHERE commande.date_commande Between :x and "
      ":y and commande.en_caisser ='no'",
      {"SumOftcc", "x", "y"}};
  Partner DataSourcesum_x{*this, "DataSourcesum_x", sum_x};
  Named x1{*this, "x1",
           "SELECT commande.n_commande, commande.n_table, commande.table, commande.date_commande, "
           "commande.remise, commande.remi, commande.commentaire, commande.HT, commande.TVA, commande.tcc, "
           "commande.login, commande.code_client, commande.client FROM commande WHERE "
           "(((commande.etat_commande)='Terminer')) and commande.en_caisser ='no'"};
  Named x2{*this,
           "x2",
           "SELECT commande.n_commande, commande.n_table, commande.table, commande.remise, commande.remi, "
           "commande.commentaire, commande.HT, commande.TVA, commande.tcc, commande.code_client, "
           "commande.client FROM commande WHERE (((commande.etat_commande)='Terminer')) and "
           "commande.date_commande Between :x and :y and commande.login like :z and commande.en_caisser "
           "='no'",
           {"x", "y", "z"}};
  Named Caisse{*this, "Caisse", "select * from Caisse"};
  Partner DataSourceCaisse{*this, "DataSourceCaisse", Caisse};
  Named acce_caisse{*this, "acce_caisse", "select * from acce_caisse"};
  Partner DataSourceacce_caisse{*this, "DataSourceacce_caisse", acce_caisse};
  Named CSS{*this, "CSS", "SELECT Count(caisse.id_caise) AS CSS FROM caisse;"};
  Partner DataSource2{*this, "DataSource2", CSS};
  Named Count_accee{
      *this, "Count_accee",
      "SELECT Count(acce_caisse.id_caisse) AS CountOfid_caisse, acce_caisse.login FROM acce_caisse "
      "WHERE acce_caisse.general='NON' GROUP BY acce_caisse.login;"};
  Named xx2{*this,
            "xx2",
            "SELECT relation_commande.article, Sum(relation_commande.qte) AS SumOfqte, "
            "Sum(relation_commande.prix) AS SumOfprix, Sum(relation_commande.total) AS SumOftotal FROM (type "
            "INNER JOIN article ON type.code = article.id_categorie) INNER JOIN (relation_commande INNER "
            "JOIN commande ON relation_commande.n_commande = commande.n_commande) ON article.code_barre = "
            "relation_commande.code_article WHERE commande.date_commande Between :x and :y and "
            "commande.etat_commande='Terminer' and commande.id_caisse like :c and commande.en_caisser ='no' "
            "GROUP BY relation_commande.article",
            {"SumOfqte", "SumOfprix", "SumOftotal", "x", "y", "c"}};
  Named Null44{
      *this,
      "Null44",
      "SELECT type.Type_Produit, Sum(relation_commande.qte) AS SumOfqte, Sum(relation_commande.prix) "
      "AS SumOfprix, Sum(relation_commande.total) AS SumOftotal FROM (type INNER JOIN article ON "
      "type.code = article.id_categorie) INNER JOIN (relation_commande INNER JOIN commande ON "
      "relation_commande.n_commande = commande.n_commande) ON article.code_barre = "
      "relation_commande.code_article WHERE commande.date_commande Between :x and :y and "
      "commande.etat_commande='Terminer' and commande.id_caisse like :c and commande.en_caisser ='no' "
      "GROUP BY type.Type_Produit",
      {"x", "y", "c"}};
  Named xxx3{
      *this,
      "xxx3",
      "SELECT relation_commande.article, Sum(relation_commande.qte) AS SumOfqte, "
      "Sum(relation_commande.prix) AS SumOfprix, Sum(relation_commande.total) AS SumOftotal FROM (type "
      "INNER JOIN article ON type.code = article.id_categorie) INNER JOIN (relation_commande INNER "
      "JOIN commande ON relation_commande.n_commande = commande.n_commande) ON article.code_barre = "
      "relation_commande.code_article WHERE commande.date_commande Between :x and :y and "
      "commande.login like :z and commande.id_caisse like :c and commande.en_caisser ='no' GROUP BY "
      "relation_commande.article",
      {"SumOfqte", "SumOfprix", "SumOftotal", "x", "y", "z", "c"}};
  Named sum_x2{
      *this,
      "sum_x2",
      "SELECT Sum(commande.tcc) AS SumOftcc FROM commande WHERE commande.date_commande Between :x and "
      ":y and commande.id_caisse like :c and commande.en_caisser ='no'",
      {"SumOftcc", "x", "y", "c"}};
  // No partner: the link by which the closing screen shows the sales of its period.
  Partner LinkSum_x2{*this, "LinkSum_x2", sum_x2};
  Named x22{*this,
            "x22",
            "SELECT commande.n_commande, commande.n_table, commande.table, commande.date_commande, "
            "commande.remise, commande.remi, commande.commentaire, commande.HT, commande.TVA, commande.tcc, "
            "commande.login, commande.code_client, commande.client FROM commande WHERE "
            "(((commande.etat_commande)='Terminer')) and commande.id_caisse like :c and commande.en_caisser "
            "='no'",
            {"c"}};
  Partner DataSource1{*this, "DataSource1", x22};
  Named x33{*this,
            "x33",
            "SELECT commande.n_commande, commande.n_table, commande.table, commande.remise, commande.remi, "
            "commande.commentaire, commande.HT, commande.TVA, commande.tcc, commande.code_client, "
            "commande.client FROM commande WHERE (((commande.etat_commande)='Terminer')) and "
            "commande.date_commande Between :x and :y and commande.login like :z and commande.id_caisse like "
            ":c and commande.en_caisser ='no'",
            {"x", "y", "z", "c"}};
  Named lastt{*this,
              "lastt",
              "SELECT Last(caise.date_fin) AS LastOfdate_fin FROM caise where caise.id_caisse like :c",
              {"c"}};
  Named X{*this,
          "X",
          "update commande set commande.en_caisser='yes' where commande.date_commande between :x and :y "
          "and commande.id_caisse like :z and commande.etat_commande='Terminer'",
          {"x", "y", "z"}};
  Named XX{*this,
           "XX",
           "update commande set commande.en_caisser='yes' where commande.date_commande between :x and :y "
           "and commande.etat_commande='Terminer'",
           {"x", "y"}};
  Named D{*this, "D", "SELECT max(depence.id_depence) AS D FROM depence;"};
  Partner DataSourceD{*this, "DataSourceD", D};
  Named Depence{*this, "Depence", "select * from Depence"};
  Partner DataSourceDepence{*this, "DataSourceDepence", Depence};
  Named stat_caisse{*this, "stat_caisse",
                    "SELECT caisse.nom_caisse, Sum(caisse.solde) AS SumOfsolde FROM caisse GROUP BY "
                    "caisse.nom_caisse;"};
  Named XXX{*this, "XXX", "update table_ set table_.control='open'"};
  Named S_01{*this, "S_01",
             "SELECT commande.J, commande.M, commande.A, Sum(commande.tcc) AS SumOftcc FROM commande WHERE "
             "(((commande.etat_commande)=\"Terminer\")) GROUP BY commande.J, commande.M, commande.A;"};
  Named D_01{*this, "D_01",
             "SELECT depence.J, depence.M, depence.A, Sum(depence.montant_dep) AS SumOfmontant_dep FROM "
             "caisse INNER JOIN depence ON caisse.ID_caise = depence.id_caisse WHERE "
             "(((caisse.general)=\"NON\")) GROUP BY depence.J, depence.M, depence.A;"};
  Named Calcul_dep{
      *this,
      "Calcul_dep",
      "SELECT Sum(depence.montant_dep) AS SumOfmontant_dep FROM caisse INNER JOIN depence ON "
      "caisse.ID_caise = depence.id_caisse WHERE caisse.general='NON' AND depence.date_depense Between "
      ":x And :y",
      {"SumOfmontant_dep", "x", "y"}};
  Partner DataSourceCalcul_dep{*this, "DataSourceCalcul_dep", Calcul_dep};
  Named best1{
      *this, "best1",
      "SELECT commande.M, commande.A, Sum(commande.tcc) AS SumOftcc, type.Type_Produit FROM type INNER "
      "JOIN (article INNER JOIN (relation_commande INNER JOIN commande ON relation_commande.n_commande "
      "= commande.n_commande) ON article.code_barre = relation_commande.code_article) ON type.code = "
      "article.id_categorie WHERE (((commande.etat_commande)=\"Terminer\")) GROUP BY commande.M, "
      "commande.A, type.Type_Produit;"};
  Partner DataSourcebest{*this, "DataSourcebest", best1};
  Named best2{
      *this, "best2",
      "SELECT commande.M, commande.A, Sum(commande.tcc) AS SumOftcc, article.designation_article FROM "
      "article INNER JOIN (relation_commande INNER JOIN commande ON relation_commande.n_commande = "
      "commande.n_commande) ON article.code_barre = relation_commande.code_article WHERE "
      "(((commande.etat_commande)=\"Terminer\")) GROUP BY commande.M, commande.A, "
      "article.designation_article;"};
  Named sum_recette{
      *this,
      "sum_recette",
      "SELECT Sum(commande.tcc) AS SumOftcc FROM commande WHERE "
      "(((commande.etat_commande)=\"Terminer\")) and commande.J Between :x And :y AND commande.M "
      "Between :z And :m AND commande.A Between :n And :l",
      {"x", "y", "z", "m", "n", "l"}};
  Partner zabi{*this, "zabi", sum_recette};
  Named sum_depense{
      *this,
      "sum_depense",
      "SELECT Sum(depence.montant_dep) AS SumOfmontant_dep FROM caisse INNER JOIN depence ON "
      "caisse.ID_caise = depence.id_caisse WHERE caisse.general=\"NON\" and depence.J Between :x And "
      ":y AND depence.M Between :z And :m AND depence.A Between :n And :l",
      {"x", "y", "z", "m", "n", "l"}};
  Partner zabo{*this, "zabo", sum_depense};
  Named T_p{*this, "T_p", "SELECT max(type.code) AS tp FROM type;"};
  Partner data_t_p{*this, "data_t_p", T_p};
  Named X_D{*this,
            "X_D",
            "update depence set depence.en_caisser='yes' where depence.date_depense between :x and :y and "
            "comdepencemande.id_caisse like :z",
            {"x", "y", "z"}};
  Named op{*this, "op", "SELECT Max(operation.n_) AS op FROM operation;"};
  Partner data_op{*this, "data_op", op};
};

extern TDM* DM;  ///< Null before it is created.

}  // namespace tavoline
