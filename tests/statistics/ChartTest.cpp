// What a pane draws, and what it shows where its rows cannot be read.

#include <gmock/gmock.h>

#include <QtGui/QImage>

#include "data/DMU.h"
#include "statistics/statU.h"
#include "support/Session.h"
#include "toolkit/theme/Theme.h"

namespace tavoline {
namespace {

using ::testing::HasSubstr;

const char kMonth[] =
    "sql insert into utilisateur(login, mot_pase, nom, role) values ('10', '1', 'Amrani', 'Admin')\n"
    "sql insert into caisse(ID_caise, nom_caisse, solde, general) values ('C001', 'Bar', 1000, 'NON')\n"
    "sql insert into commande(n_commande, etat_commande, tcc, J, M, A) values (1, 'Terminer', 90000, 9, 7, "
    "2024), "
    "(2, 'Terminer', 120000, 12, 7, 2024)\n"
    "sql insert into depence(ID_depence, montant_dep, id_caisse, J, M, A) values (1, 8000, 'C001', 3, 7, "
    "2024)\n"
    "start\nlogin 10 1\ntap MenuF.AdvSmoothButton3\nin statF\ntap RevenusDepenses";

int pixelsOf(QWidget& pane, QColor colour) {
  const QImage picture = pane.grab().toImage().convertToFormat(QImage::Format_RGB32);
  int count = 0;
  for (int y = 0; y < picture.height(); ++y)
    for (int x = 0; x < picture.width(); ++x) count += picture.pixelColor(x, y) == colour;
  return count;
}

TEST(ChartTest, BarsArePaintedAndBlankWhereNothingIsShown) {
  Session session;
  session.play(kMonth);
  const QColor bar(theme().accent);
  const int painted = pixelsOf(*statF->RevenuChart, bar);
  EXPECT_GT(painted, 2000) << "two bars, of more than half the height";
  statF->RevenuChart->Clear();
  session.at.settle();
  EXPECT_LT(pixelsOf(*statF->RevenuChart, bar), 300) << "nothing but the sign of the legend";
}

TEST(ChartTest, WhereTheStoreFailsNoPaneKeepsItsFormerFigures) {
  Session session;
  session.play(kMonth);
  ASSERT_EQ(statF->DepenseChart->chartValues(), "8000");
  DM->S_01.Close();  // as a failing store leaves it
  EXPECT_THAT(session.play("tap RevenusDepenses"), HasSubstr("S_01"));
  EXPECT_EQ(statF->RevenuChart->chartValues(), "");
  EXPECT_EQ(statF->DepenseChart->chartValues(), "");
}

}  // namespace
}  // namespace tavoline
