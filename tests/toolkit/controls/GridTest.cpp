#include "data/value/Errors.h"
#include "support/StoreCounting.h"
#include "toolkit/ToolkitFixture.h"
#include "toolkit/controls/DBGrid.h"
#include "toolkit/controls/DateEdit.h"

#include <QtGui/QContextMenuEvent>
#include <QtGui/QPointingDevice>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMenu>
#include <QtWidgets/QScrollBar>

namespace tavoline {
namespace {

constexpr int rows = 5000;

/// A grid over a long list of articles, on a store that counts what is asked of it.
class GridTest : public testing::Test {
 protected:
  GridTest() {
    station.sql("with recursive n(i) as (select 1 union all select i + 1 from n where i < " +
                std::to_string(rows) +
                ") insert into article (code_barre, designation_article, qte_stock, prix_vente)"
                " select printf('%05d', i), 'Article ' || i, i, i * 1.5 from n");
    station.start(std::make_shared<CountingStore>(Store::open(TDM::ConnectionString), counts));
    screen = &station.create<TestScreen>();
    grid = screen->add<DBGrid>("DBGridEh1", "DataSourceArticle", "");
    grid->setColumns({"code_barre=Code Article", "designation_article=Designation Article|rw",
                      "qte_stock=QTE Stock", "prix_vente=Prix|rw,140"});
  }
  void open() {
    screen->BindControls();
    screen->Show();
    station.settle();
  }
  QString cell(int row, int column) const { return grid->model()->index(row, column).data().toString(); }
  QPoint place(int row, int column) const {
    return grid->visualRect(grid->model()->index(row, column)).center();
  }
  std::string current() { return DM->Article["code_barre"].text(); }

  StoreCounts counts;
  Workstation station;
  TestScreen* screen;
  DBGrid* grid;
};

TEST_F(GridTest, OnlyWhatIsSeenIsRead) {
  open();
  EXPECT_EQ(cell(0, 1), "Article 1");
  EXPECT_EQ(grid->model()->rowCount(), rows);
  EXPECT_LT(counts.rows, rows + 300);  // the list of row numbers, and a page or two
  EXPECT_TRUE(grid->viewport()->rect().contains(place(5, 0)));

  counts = {};
  DM->Article.Next();
  station.settle();
  EXPECT_LT(counts.rows, 300);

  grid->setVisible(false);
  station.settle();
  counts = {};
  DM->Article.FilterBy("qte_stock>=4990");
  DM->Article.Reopen();
  station.settle();
  EXPECT_EQ(counts.rows, 0);
  grid->setVisible(true);
  station.settle();
  EXPECT_EQ(grid->model()->rowCount(), 11);
  EXPECT_EQ(cell(0, 0), "04990");
}

TEST_F(GridTest, TheCurrentRowIsSelectedAndKeptInView) {
  open();
  for (const bool last : {true, false}) {
    last ? DM->Article.Last() : DM->Article.First();
    station.settle();
    const int row = last ? rows - 1 : 0;
    ASSERT_EQ(grid->selectionModel()->selectedRows().size(), 1);
    EXPECT_EQ(grid->selectionModel()->selectedRows().first().row(), row);
    EXPECT_TRUE(grid->viewport()->rect().contains(place(row, 0)));
  }
}

TEST_F(GridTest, AClickMovesTheDatasetThenTellsTheScreen) {
  std::string seen;
  grid->OnCellClick = [&] { seen += current() + " "; };
  grid->OnDblClick = [&] { seen += "twice "; };
  open();
  station.tapAt(grid->viewport(), place(3, 1));
  EXPECT_EQ(seen, "00004 ");
  station.doubleTapAt(grid->viewport(), place(2, 0));
  EXPECT_THAT(seen, testing::HasSubstr("00003 "));
  EXPECT_THAT(seen, testing::HasSubstr("twice"));
}

// A box in the midst of that key would leave the cell that is being opened to its own event loop, which frees
// it.
TEST_F(GridTest, TheBoxOfALossOfFocusComesAfterTheKeyThatOpensACell) {
  auto* const date = screen->add<DateEdit>("RzDateTimeEdit1");
  grid->setReadOnly(false);
  open();
  bool inKey = false;
  std::vector<std::string> told;
  Messages::current().show = [&](const std::string& text, const std::string&) {
    EXPECT_FALSE(inKey);
    told.push_back(text);
  };
  date->setFocus();
  station.type("L'eau");
  grid->setCurrentIndex(grid->model()->index(0, 1));
  inKey = true;
  QTest::keyClick(grid, Qt::Key_X);
  inKey = false;
  station.settle();
  EXPECT_THAT(told, testing::ElementsAre(testing::HasSubstr("L'eau")));
  const auto* const cell = grid->findChild<QLineEdit*>();
  ASSERT_TRUE(cell);
  EXPECT_EQ(cell->text(), "x");
}

TEST_F(GridTest, CursorKeysMoveTheDatasetAndStayWithinTheRows) {
  int clicks = 0;
  grid->OnCellClick = [&] { ++clicks; };
  open();
  grid->SetFocus();
  const struct {
    Qt::Key key;
    const char* code;
  } steps[] = {{Qt::Key_Up, "00001"},  {Qt::Key_Down, "00002"}, {Qt::Key_Down, "00003"},
               {Qt::Key_Up, "00002"},  {Qt::Key_End, "05000"},  {Qt::Key_Down, "05000"},
               {Qt::Key_Home, "00001"}};
  for (const auto& step : steps) {
    station.press(step.key);
    EXPECT_EQ(current(), step.code);
    EXPECT_FALSE(DM->Article.Eof());
  }
  station.press(Qt::Key_PageDown);
  const int page = DM->Article.RecordNumber();
  EXPECT_GT(page, 3);
  station.press(Qt::Key_PageUp);
  EXPECT_EQ(current(), "00001");
  EXPECT_EQ(clicks, 0);
}

TEST_F(GridTest, ATypedCellIsPostedWhenItsRowIsLeft) {
  grid->setReadOnly(false);
  open();
  grid->SetFocus();
  const auto edit = [&](int row, int column, const char* text) {
    station.tapAt(grid->viewport(), place(row, column));
    station.press(Qt::Key_F2);
    auto* editor = grid->findChild<QLineEdit*>();
    ASSERT_TRUE(editor);
    editor->selectAll();
    station.type(text);
    station.press(Qt::Key_Return);
  };
  const auto stored = [&](const char* column) {
    return station.value("select " + std::string(column) + " from article where code_barre = '00002'");
  };
  edit(1, 3, "99,5");
  EXPECT_EQ(DM->Article.State(), DatasetState::Edit);
  EXPECT_EQ(cell(1, 3), "99,5");
  EXPECT_EQ(stored("prix_vente"), "3.0");
  edit(1, 1, "Café");
  station.press(Qt::Key_Down);
  EXPECT_EQ(stored("prix_vente"), "99.5");
  EXPECT_EQ(stored("designation_article"), "Café");

  station.answers({{testing::HasSubstr("cher")}});
  edit(1, 3, "cher");
  EXPECT_EQ(cell(1, 3), "99,5");
  DM->Article.Cancel();

  station.tapAt(grid->viewport(), place(1, 2));  // a column that is not written
  station.press(Qt::Key_F2);
  EXPECT_FALSE(grid->findChild<QLineEdit*>());
  grid->setReadOnly(true);
  station.tapAt(grid->viewport(), place(1, 1));
  station.press(Qt::Key_F2);
  EXPECT_FALSE(grid->findChild<QLineEdit*>());
}

TEST_F(GridTest, ColumnsAreTitledAlignedColouredAndTouchable) {
  const QColor red(220, 40, 40);
  grid->OnCellColour = [&](Dataset& articles, std::size_t record, const std::string& field) {
    const bool low = articles.ValueAt(record, std::size_t(articles.ColumnIndex("qte_stock"))) <= Value(2);
    return low && field == "qte_stock" ? red : QColor();
  };
  open();
  EXPECT_EQ(grid->model()->headerData(1, Qt::Horizontal).toString(), "Designation Article");
  const auto rightAligned = [&](int column) {
    return (grid->model()->index(0, column).data(Qt::TextAlignmentRole).toInt() & Qt::AlignRight) != 0;
  };
  EXPECT_FALSE(rightAligned(1));
  EXPECT_TRUE(rightAligned(2));
  EXPECT_GE(grid->rowHeight(0), 48);
  EXPECT_GE(grid->horizontalHeader()->height(), 40);
  int width = 0;
  for (int column = 0; column < 4; ++column) width += grid->columnWidth(column);
  EXPECT_GE(width, grid->viewport()->width());  // the last one stretches

  const QImage picture = grid->viewport()->grab().toImage();
  const auto paint = [&](int row, int column) {
    return QColor(
        picture.pixel(grid->visualRect(grid->model()->index(row, column)).topLeft() + QPoint(4, 6)));
  };
  EXPECT_EQ(paint(1, 2), red);
  EXPECT_NE(paint(1, 1), red);
  EXPECT_NE(paint(4, 2), red);
}

TEST_F(GridTest, AmountsAreWholeWhereverTheGridStands) {
  station.sql("update article set prix_vente = 1234567.755 where code_barre = '05000'");
  DM->Article.Reopen();
  grid->setColumns({"code_barre=Code Article", "prix_vente=Prix|money,rw", "designation_article=Article"});
  grid->setReadOnly(false);
  open();
  EXPECT_EQ(cell(0, 1), "01,50");
  const int before = grid->columnWidth(1);
  DM->Article.Last();
  station.settle();
  EXPECT_EQ(cell(rows - 1, 1), "1234567,76");
  EXPECT_GE(grid->columnWidth(1), grid->fontMetrics().horizontalAdvance("1234567,76") + 24);
  const int wide = grid->columnWidth(1);
  DM->Article.First();
  station.settle();
  EXPECT_EQ(grid->columnWidth(1), wide) << "columns grow as rows come into sight, and do not shrink again";
  EXPECT_LT(before, wide);

  station.tapAt(grid->viewport(), place(1, 1));
  station.press(Qt::Key_F2);
  EXPECT_EQ(grid->findChild<QLineEdit*>()->text(), "3") << "an edit shows the exact value";
}

// Too many columns are written in smaller letters, all of them, and nothing is moved out of sight; with more
// room the letters are the usual ones again. A figure too long even so leaves the letters alone.
TEST_F(GridTest, ManyColumnsFitInSmallerLettersTogether) {
  grid->setWordWrap(true);
  QStringList columns;
  for (int i = 0; i < 6; ++i) columns << "prix_vente=Prix de vente|money";
  grid->setColumns(columns << "designation_article=Article|wide");
  station.sql("update article set prix_vente = 12345.75");
  DM->Article.Reopen();
  open();
  const auto fits = [&] { return grid->horizontalHeader()->length() <= grid->viewport()->width(); };
  const auto letters = [&](int width) {
    screen->resize(width, 480);
    station.settle();
    return grid->property("letters").toInt();
  };
  EXPECT_EQ(letters(1200), 0);
  const int small = letters(520);
  EXPECT_GT(small, 0);
  EXPECT_TRUE(fits());
  EXPECT_EQ(letters(1200), 0);
  EXPECT_TRUE(fits());
  EXPECT_EQ(letters(200), 0);
  EXPECT_FALSE(fits());
}

TEST_F(GridTest, TheMenuIsForTheRowUnderTheFinger) {
  QAction reprint(QStringLiteral("Réimprimer"), grid);
  std::string chosen;
  QObject::connect(&reprint, &QAction::triggered, grid, [&] { chosen = current(); });
  grid->addAction(&reprint);
  open();
  const auto menu = [] { return qobject_cast<QMenu*>(QApplication::activePopupWidget()); };
  const std::function<void(QPoint)> opens[] = {
      [&](QPoint at) {
        QContextMenuEvent event(QContextMenuEvent::Mouse, at, grid->viewport()->mapToGlobal(at));
        QApplication::sendEvent(grid->viewport(), &event);
      },
      [&](QPoint at) {
        const std::unique_ptr<QPointingDevice> finger(QTest::createTouchDevice());
        QTest::touchEvent(grid, finger.get()).press(0, grid->viewport()->mapTo(grid, at), grid);
        station.waitUntil([&] { return menu() != nullptr; });
        QTest::touchEvent(grid, finger.get()).release(0, grid->viewport()->mapTo(grid, at), grid);
      },
  };
  int row = 2;
  for (const auto& open : opens) {
    chosen.clear();
    open(place(++row, 1));
    ASSERT_TRUE(menu());
    EXPECT_EQ(menu()->actions(), QList<QAction*>{&reprint});
    reprint.trigger();
    EXPECT_EQ(chosen, "0000" + std::to_string(row + 1));
    menu()->close();
    station.settle();
  }
}

TEST_F(GridTest, AStoreThatFailsIsToldOnceAndEmptiesTheGrid) {
  grid->OnCellColour = [](Dataset&, std::size_t, const std::string&) -> QColor {
    throw StoreError("La base de données est occupée.");
  };
  station.answers({{"La base de données est occupée."}});
  open();
  EXPECT_EQ(grid->model()->rowCount(), 0);
  grid->OnCellColour = {};
  DM->Article.Reopen();
  station.settle();
  EXPECT_EQ(grid->model()->rowCount(), rows);
}

}  // namespace
}  // namespace tavoline
