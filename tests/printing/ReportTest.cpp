#include "toolkit/report/Report.h"

#include <QtCore/QDir>
#include <QtCore/QProcess>
#include <QtPrintSupport/QPrinter>
#include <QtWidgets/QPushButton>

#include "data/value/Clock.h"
#include "data/value/Errors.h"
#include "support/Workstation.h"
#include "toolkit/report/Support.h"
#include "toolkit/report/preview/Preview.h"

namespace tavoline {
namespace {

using report::BandKind;
using report::words;
using testing::Contains;
using testing::HasSubstr;
using Words = std::vector<std::string>;

// The datasets of the system over a store with three orders: 7 and 8 are sold, 9 is open and has no amounts.
class ReportTest : public testing::Test {
 public:
  ReportTest() {
    station_.sql("insert into utilisateur(login, nom) values ('ab12', 'BENALI')");
    for (const char* order : {"7, 'Salle 1', 100.5, 19, 5, 114.5, '2024-03-09 12:45:07.000'",
                              "8, 'Salle 2', 40, 0, 0, 40, '2024-03-09 13:00:00.000'",
                              "9, 'Salle 3', null, null, null, null, '2024-03-09 13:10:00.000'"}) {
      station_.sql(std::string("insert into commande(n_commande, \"table\", HT, TVA, remi, tcc, "
                               "date_commande, login) values (") +
                   order + ", 'ab12')");
    }
    for (const char* line : {"7, 'CAFÉ', 2, 30.25, 60.5", "7, 'THÉ', 1, 40, 40", "8, 'CAFÉ', 1, 40, 40"}) {
      station_.sql(
          std::string("insert into relation_commande(n_commande, article, qte, prix, total) values (") +
          line + ")");
    }
    station_.start();
    DM->imp_commande.FilterBy("n_commande='7'");
    Clock::set([] { return DateTime::of(2024, 3, 9, 14, 0, 0); });
  }
  ~ReportTest() override {
    Clock::set({});
    Preview::observer = nullptr;
    report::PrintSystem::current() = report::PrintSystem::real();
  }

 protected:
  Workstation station_;
};

TEST_F(ReportTest, aTicketIsShownUntilItIsClosedAndTheDatasetStaysAsItWasLaunched) {
  Report ticket("TCommande_avnF", "frxReport1");
  int closed = 0;
  ticket.OnClosePreview = [&] { ++closed; };
  station_.during([&] { ticket.ShowReport(true); },
                  [&] {
                    ASSERT_TRUE(Preview::current());
                    const auto& pages = *Preview::current()->panel().document();
                    ASSERT_EQ(pages.pageCount(), 1U);
                    EXPECT_EQ(words(pages, 0, BandKind::MasterData),
                              (Words{"2", "CAFÉ", "30,25", "60,5", "1", "THÉ", "40", "40"}));
                    EXPECT_THAT(words(pages, 0, BandKind::Title), Contains("BENALI"));
                    EXPECT_THAT(words(pages, 0, BandKind::Title), Contains("09/03/2024 12:45:07"));
                    EXPECT_THAT(words(pages, 0, BandKind::Summary), Contains("100,5 DA"));
                    EXPECT_THAT(words(pages, 0, BandKind::PageFooter), Contains("7"));
                    EXPECT_EQ(closed, 0);
                    station_.tap(Preview::current()->findChild<QPushButton*>("ClosePreview"));
                  });
  EXPECT_EQ(closed, 1);
  EXPECT_TRUE(DM->imp_commande.Active());
  EXPECT_TRUE(DM->imp_commande.Filtered());
  EXPECT_EQ(DM->imp_commande.Filter(), "n_commande='7'");
  EXPECT_EQ(DM->imp_commande["article"].text(), "THÉ") << "the pass ended on the last record";
}

TEST_F(ReportTest, aLaunchShowsOnlyTheNewDocument) {
  Words numbers;
  Preview::observer = [&](Preview& preview) {
    const auto& pages = *preview.panel().document();
    for (std::size_t page = 0; page < pages.pageCount(); ++page)
      numbers.push_back(words(pages, page, BandKind::PageFooter).front());
  };
  Report ticket("TCommande_avnF", "frxReport1");
  ticket.ShowReport(true);
  DM->imp_commande.FilterBy("n_commande='8'");
  ticket.ShowReport(true);
  EXPECT_EQ(numbers, (Words{"7", "8"}));
  numbers.clear();
  ticket.ShowReport(false);
  EXPECT_EQ(numbers, (Words{"8", "8"})) << "unless the earlier pages are to be kept";
}

TEST_F(ReportTest, printsDirectlyWithoutADialogWhenTold) {
  int asked = 0;
  report::PrintSystem::current() = {[] { return QStringList("Caisse"); }, [] { return QString("Caisse"); },
                                    [&](QPrinter&, QWidget*) {
                                      ++asked;
                                      return false;
                                    }};
  Report ticket("TCommande_avnF", "frxReport2");
  EXPECT_TRUE(ticket.PrintOptions.ShowDialog);
  EXPECT_THROW(ticket.Print(), Error) << "nothing was prepared";
  ticket.PrepareReport(true);
  ticket.Print();
  EXPECT_EQ(asked, 1);
  ticket.PrintOptions.ShowDialog = false;
  try {
    ticket.Print();
    ADD_FAILURE() << "that printer does not exist";
  } catch (const Error& error) {
    EXPECT_THAT(error.what(), HasSubstr("ne répond plus"));
  }
  EXPECT_EQ(asked, 1);
}

TEST_F(ReportTest, withoutAPrinterThePaperIsAPdfBesideTheStore) {
  report::PrintSystem::current() = {[] { return QStringList(); }, [] { return QString(); }, {}};
  station_.answers({{HasSubstr("impressions/Ticket 7 2024-03-09 14h00m00.pdf")}, {HasSubstr("par défaut")}});
  Report ticket("TCommande_avnF", "frxReport1");
  ticket.PrepareReport(true);
  ticket.Print();
  report::PrintSystem::current().printers = [] { return QStringList("Cuisine"); };
  ticket.PrintOptions.ShowDialog = false;
  ticket.Print();
  QProcess reader;
  reader.start("pdftotext", {"-layout", "impressions/Ticket 7 2024-03-09 14h00m00.pdf", "-"});
  ASSERT_TRUE(reader.waitForFinished());
  const std::string text = reader.readAllStandardOutput().toStdString();
  for (const char* word : {"TICKET", "BENALI", "THÉ", "60,5", "VOUS SOUHAITE LA BIEN VENUE"})
    EXPECT_THAT(text, HasSubstr(word));
}

TEST_F(ReportTest, theEstablishmentBesideTheStoreHeadsTheTicket) {
  QDir().mkpath("etablissement");
  QFile file("etablissement/etablissement.ini");
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write("nom = CHEZ NOUS\n");
  file.close();
  Report ticket("TCommande_avnF", "frxReport2");
  ticket.PrepareReport(true);
  const Words title = words(*ticket.pages(), 0, BandKind::Title);
  EXPECT_EQ(title.front(), "CHEZ NOUS");
  EXPECT_EQ(title.back(), "CHEZ NOUS VOUS SOUHAITE LA BIEN VENUE");
}

TEST_F(ReportTest, aDocumentStaysInThePanelThatItsTemplateNames) {
  QWidget screen;
  auto* panel = new PreviewPanel(&screen);
  panel->setObjectName("frxPreview1");
  Report summary("TPanelF", "frxReport1", &screen);
  summary.ShowReport(true);
  ASSERT_TRUE(panel->document());
  EXPECT_EQ(words(*panel->document(), 0, BandKind::Summary), Words{"154,5 DA"});
  EXPECT_THAT(words(*panel->document(), 0, BandKind::Title).front(), HasSubstr("N° TVA : "));
  DM->commande.FilterBy("n_commande='8'");
  summary.ShowReport(true);
  EXPECT_EQ(words(*panel->document(), 0, BandKind::Summary), Words{"40 DA"});
  EXPECT_THROW(Report("TPanelF", "frxReport1").ShowReport(true), Error) << "the screen has no such panel";
}

}  // namespace
}  // namespace tavoline
