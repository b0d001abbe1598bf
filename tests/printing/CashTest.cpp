// The papers of the cash: the summaries of a period, the closing sheet, the journal.

#include "printing/Documents.h"

namespace tavoline::report {
namespace {

Rows sold(int lines) {
  Rows::Records records;
  for (int i = 1; i <= lines; ++i)
    records.push_back({{"article", i % 2 == 0 ? "SANDWICH POULET GRILLÉ FROMAGE DOUBLE" : "CAFÉ"},
                       {"Type_Produit", "Boissons chaudes"},
                       {"SumOfqte", 40 * i},
                       {"SumOfprix", 1250.5},
                       {"SumOftotal", 123456.5 + i}});
  return Rows(records);
}

Rows orders(int count, bool dated = true) {
  Rows::Records records;
  for (int i = 1; i <= count; ++i) {
    Rows::Record order{{"n_commande", i},
                       {"HT", 100},
                       {"TVA", 19},
                       {"remi", i % 2 == 0 ? Value(5) : Value()},
                       {"tcc", 114.5}};
    if (dated) order["date_commande"] = DateTime::of(2024, 7, 14, 9, i % 60);
    records.push_back(order);
  }
  return Rows(records);
}

Rows closings(int count) {
  Rows::Records records;
  for (int i = 1; i <= count; ++i)
    records.push_back(
        {{"n_caise", i},
         {"date_debut", DateTime::of(2024, 7, 13, 9, i % 60)},
         {"date_fin", DateTime::of(2024, 7, 14, 23, i % 60, 5)},
         {"id_caisse", i == 1 ? "Tous Caisses" : "C001"},
         {"login", "20"},
         {"solde_caisse", 12000},
         {"total_caise", 11500.5},
         {"total_recettes", 98765.25},
         {"prelevement_caise", 9000},
         {"fond_caisse", 2500.5},
         {"ecat_caise", i % 2 == 0 ? Value() : Value(-499.5)},
         {"total_depense", 300},
         {"justification", i == 1 ? Value("Erreur de rendu à midi, la différence est retenue sur "
                                          "la prochaine paie")
                                  : Value()}});
  return Rows(records);
}

Rows expenses(int count) {
  Rows::Records records;
  for (int i = 1; i <= count; ++i)
    records.push_back({{"ID_depence", i},
                       {"date_depense", DateTime::of(2024, 7, 14, 9, i % 60, 5)},
                       {"type_depnce", "Payer une Facture D'achat"},
                       {"montant_dep", 123456.75},
                       {"id_utilisateur", i == 1 ? Value() : Value("32")},
                       {"nom_uilisateur", i == 1 ? Value() : Value("Cherif")},
                       {"id_caisse", "C001"}});
  return Rows(records);
}

Rows purchase(int lines) {
  Rows::Records records;
  for (int i = 1; i <= lines; ++i)
    records.push_back({{"N_facture", 1234},
                       {"date_facture", DateTime::of(2024, 7, 14)},
                       {"code_fournisseur", "F001"},
                       {"nom_fournisseur", "Boissons du Sahel"},
                       {"n_telephone", Value()},
                       {"TVA", 19.5},
                       {"TCC", 123456.75},
                       {"MONTANT_VERSE", 900},
                       {"MONTANT_RESTE", 122556.75},
                       {"article", "SODA ORANGE"},
                       {"qte_achat", 24},
                       {"prix_achat", 45},
                       {"TOTAL", 1080 + i}});
  return Rows(records);
}

TEST(CashDocuments, areAsTheyWereFoundGood) {
  Rows some = sold(2), served = orders(7), undated = orders(3, false);
  Rows one = closings(1), journal = closings(2), bought = purchase(1);
  const struct {
    const char* dump;
    const char* report;
    std::vector<RecordSource*> sources;
  } documents[] = {
      {"sales", "TcaiseF.frxReport2", {&some, &served}},
      {"sales-by-user", "TcaiseF.frxReport4", {&some, &undated}},
      {"closing-sheet", "TcaiseF.frxReport7", {&one}},
      {"closings", "Tliste_caiseF.frxReport1", {&journal}},
      {"purchase", "Tliste_facture_achatF.frxReport2", {&bought}},
  };
  for (const auto& document : documents) {
    SCOPED_TRACE(document.dump);
    const auto report = shippedTemplate(document.report);
    ASSERT_TRUE(report);
    expectDump(rendered(report, document.sources, testBlock()), document.dump);
  }
}

// Rows go on at the head of a page, and sums stand once, at the end.
TEST(CashDocuments, endOnAnotherPage) {
  Rows spent = expenses(33);
  const Document document = documentOf("Tliste_depenceF.frxReport1", spent);
  Document last(document.sharedReport(), document.logo());
  last.add(document.page(document.pageCount() - 1));
  expectDump(last, "expenses-last-page");
}

}  // namespace
}  // namespace tavoline::report
