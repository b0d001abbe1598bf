#include <QtCore/QDir>

#include "printing/Documents.h"

namespace tavoline::report {
namespace {

using Words = std::vector<std::string>;

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
  Rows few = orderRows(2), none(Rows::Records{});
  Rows journal = journalRows(3);
  const struct {
    const char* dump;
    const char* report;
    Rows* rows;
  } documents[] = {
      {"ticket", "TCommande_avnF.frxReport1", &few},     {"table-ticket", "TCommande_avnF.frxReport2", &few},
      {"invoice", "Tliste_commandeF.frxReport2", &few},  {"journal", "Tliste_commandeF.frxReport3", &journal},
      {"products", "TListe_produitF.frxReport1", &none},
  };
  for (const auto& document : documents) {
    SCOPED_TRACE(document.dump);
    expectDump(documentOf(document.report, *document.rows), document.dump);
  }
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
