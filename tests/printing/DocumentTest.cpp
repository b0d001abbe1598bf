#include <QtCore/QDir>

#include "printing/Documents.h"

namespace tavoline::report {
namespace {

using testing::Contains;
using Words = std::vector<std::string>;

struct Shipped {
  const char* name;
  double titleHeight, dataHeight, summaryHeight, footerHeight;  // -1 for a band that is not there
  std::vector<std::string> dataSets;
};

TEST(Documents, templatesHaveTheirBandsAndDatasets) {
  const Shipped shipped[] = {
      {"TCommande_avnF.frxReport1", 181.41744, 18.89765, 75.5906, 34.01577, {"imp_commande"}},
      {"TCommande_avnF.frxReport2", 198.56029714, -1, -1, -1, {"imp_commande"}},
      {"Tliste_commandeF.frxReport1", 181.41744, 18.89765, 75.5906, 34.01577, {"imp_commande"}},
      {"Tliste_commandeF.frxReport2", 192.75603, 18.89765, 83.14966, 34.01577, {"imp_facture_vente"}},
      {"Tliste_commandeF.frxReport3", 112.43478261, 18.89765, 92.78812571, -1, {"commande"}},
      {"Tliste_depenceF.frxReport1", 112.43478261, 18.89765, 41.18095238, -1, {"Depence"}},
      {"TListe_produitF.frxReport1", 112.43478261, 20.33043479, 28.8, -1, {""}},
  };
  EXPECT_GE(QDir(":/templates").entryList().size(), std::ssize(shipped));
  for (const Shipped& expected : shipped) {
    SCOPED_TRACE(expected.name);
    const auto report = shippedTemplate(expected.name);
    ASSERT_TRUE(report);
    const auto height = [&](BandKind kind) { return report->band(kind) ? report->band(kind)->height : -1; };
    EXPECT_EQ(height(BandKind::Title), expected.titleHeight);
    EXPECT_EQ(height(BandKind::MasterData), expected.dataHeight);
    EXPECT_EQ(height(BandKind::Summary), expected.summaryHeight);
    EXPECT_EQ(height(BandKind::PageFooter), expected.footerHeight);
    std::vector<std::string> dataSets;
    for (const ReportDataset& dataset : report->datasets) dataSets.push_back(dataset.dataSet);
    EXPECT_EQ(dataSets, expected.dataSets);
  }
}

// What leaves the paper, or its band, would be cut off in print; overlapping texts could not be read.
TEST(Documents, everyObjectStandsInItsBandOnThePaper) {
  for (const QString& file : QDir(":/templates").entryList()) {
    const auto report = shippedTemplate(file.chopped(4).toStdString());
    ASSERT_TRUE(report);
    const PageSetup& page = report->page;
    const double room = page.unitWidth() - (page.marginLeft + page.marginRight) * kUnitsPerMm;
    for (const Band& band : report->bands) {
      for (const Object& object : band.objects) {
        if (!object.visible) continue;
        SCOPED_TRACE(file.toStdString() + " " + object.name);
        EXPECT_GE(object.left, 0);
        EXPECT_LE(object.left + object.width, room + 0.001);
        EXPECT_LE(object.top + object.height, band.height + 0.001);
        for (const Object& other : band.objects) {
          if (&other == &object || !other.visible) continue;
          // Frames that meet may lie a quarter of a unit over one another.
          const bool apart = object.left + object.width <= other.left + 0.25 ||
                             other.left + other.width <= object.left + 0.25 ||
                             object.top + object.height <= other.top + 0.25 ||
                             other.top + other.height <= object.top + 0.25;
          EXPECT_TRUE(apart) << "overlaps " << other.name;
        }
      }
    }
  }
}

TEST(Documents, areAsTheyWereFoundGood) {
  Rows few = orderRows(3), many = orderRows(20), none(Rows::Records{});
  Rows journal = journalRows(6), longJournal = journalRows(45);
  const struct {
    const char* dump;
    const char* report;
    Rows* rows;
  } documents[] = {
      {"ticket", "TCommande_avnF.frxReport1", &few},
      {"ticket-two-pages", "TCommande_avnF.frxReport1", &many},
      {"ticket-empty", "TCommande_avnF.frxReport1", &none},
      {"table-ticket", "TCommande_avnF.frxReport2", &few},
      {"reprint", "Tliste_commandeF.frxReport1", &few},
      {"invoice", "Tliste_commandeF.frxReport2", &few},
      {"invoice-two-pages", "Tliste_commandeF.frxReport2", &many},
      {"journal", "Tliste_commandeF.frxReport3", &journal},
      {"journal-two-pages", "Tliste_commandeF.frxReport3", &longJournal},
      {"products", "TListe_produitF.frxReport1", &none},
  };
  for (const auto& document : documents) {
    SCOPED_TRACE(document.dump);
    expectDump(documentOf(document.report, *document.rows), document.dump);
  }
}

TEST(Documents, aLongTicketBearsItsNumberOnEveryPage) {
  Rows rows = orderRows(20);
  const Document ticket = documentOf("TCommande_avnF.frxReport1", rows);
  ASSERT_EQ(ticket.pageCount(), 2U);
  for (std::size_t page = 0; page < 2; ++page) {
    EXPECT_EQ(words(ticket, page, BandKind::PageFooter),
              (Words{"1042", "CAFÉ DU PORT VOUS SOUHAITE LA BIEN VENUE"}));
  }
  EXPECT_THAT(words(ticket, 0), Contains("TICKET   N° :"));
  EXPECT_TRUE(words(ticket, 0, BandKind::Summary).empty());
  const Words summary = words(ticket, 1, BandKind::Summary);
  EXPECT_THAT(summary, Contains("1234,5 DA"));
  EXPECT_TRUE(words(ticket, 1, BandKind::Title).empty());
}

TEST(Documents, theTotalIsThatOfTheLinesPrinted) {
  Rows rows = orderRows(3);
  const Words summary = words(documentOf("TCommande_avnF.frxReport1", rows), 0, BandKind::Summary);
  EXPECT_EQ(summary, (Words{"Total HT : ", "532,5 DA", "TVA : ", "19,5 DA", "Remise : ", "50 DA",
                            "Total TTC : ", "1234,5 DA"}));
}

TEST(Documents, theJournalAddsWhatIsThere) {
  Rows rows = journalRows(6);
  const Words summary = words(documentOf("Tliste_commandeF.frxReport3", rows), 0, BandKind::Summary);
  EXPECT_EQ(summary, (Words{"Total TCC:", "1287", "DA", "Total HT:", "1203", "DA", "Total TVA:", "84", "DA",
                            "Total Remise:", "20", "DA"}));
}

TEST(Documents, withoutRowsTotalsAreNothingOrZero) {
  Rows none(Rows::Records{});
  EXPECT_EQ(words(documentOf("TCommande_avnF.frxReport1", none), 0, BandKind::Summary),
            (Words{"Total HT : ", "0 DA", "TVA : ", " DA", "Remise : ", " DA", "Total TTC : ", " DA"}));
}

TEST(Documents, onAnotherPaperTheSameBandsAreLaidOutAgain) {
  Rows rows = orderRows(20);
  Document ticket = documentOf("TCommande_avnF.frxReport1", rows);
  const std::string before = ticket.dump();
  PageSetup longer = ticket.setup();
  longer.height = 400;
  EXPECT_FALSE(ticket.rearrange(longer, [](std::size_t done, std::size_t) { return done == 0; }));
  EXPECT_EQ(ticket.dump(), before) << "given up";
  EXPECT_TRUE(ticket.rearrange(longer));
  ASSERT_EQ(ticket.pageCount(), 1U);
  EXPECT_EQ(words(ticket, 0, BandKind::MasterData).size(), 80U);
  EXPECT_EQ(words(ticket, 0, BandKind::PageFooter).front(), "1042");
  ticket.rearrange(ticket.report().page);
  EXPECT_EQ(ticket.dump(), before);
}

}  // namespace
}  // namespace tavoline::report
