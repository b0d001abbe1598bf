#include "data/value/Clock.h"
#include "data/value/Errors.h"
#include "data/value/Regional.h"
#include "toolkit/ToolkitFixture.h"
#include "toolkit/controls/Button.h"
#include "toolkit/controls/DateEdit.h"
#include "toolkit/controls/Lookup.h"

#include <QtTest/QTest>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QCalendarWidget>

namespace tavoline {
namespace {

class ChoiceTest : public ToolkitTest {
 protected:
  DBLookupComboBox* addCategory(const char* source = "", const char* field = "") {
    auto* box = screen->add<DBLookupComboBox>("RzDBLookupComboBox1", source, field);
    box->setListSource("DataSourceType");
    box->setKeyField("code");
    box->setListFields("code;Type_Produit");
    return box;
  }
  DBLookupListBox* addPlaces() {
    auto* list = screen->add<DBLookupListBox>("DBLookupListBox1");
    list->setListSource("DataSourceEndroit");
    list->setKeyField("ID_endroit");
    list->setListFields("Endoit");
    return list;
  }
};

TEST_F(ChoiceTest, ShowingAValueMovesNothing) {
  DBLookupComboBox* box = addCategory("DataSourceArticle", "id_categorie");
  open();
  DM->Article.Last();
  EXPECT_EQ(box->KeyValue(), Value(20));
  EXPECT_EQ(box->Text(), "20 · Plats");
  station.settle();
  EXPECT_EQ(box->currentIndex(), 1);
  EXPECT_EQ(DM->type_produit["code"], Value(10));
}

TEST_F(ChoiceTest, ChoosingMovesTheListThenWritesTheFieldThenTellsTheScreen) {
  DBLookupComboBox* box = addCategory("DataSourceArticle", "id_categorie");
  open();
  std::string seen;
  box->OnChange = [&] {
    seen = DM->type_produit["Type_Produit"].text() + DM->Article["id_categorie"].text();
  };
  box->SetFocus();
  station.press(Qt::Key_Down);
  EXPECT_EQ(seen, "Plats20");
  EXPECT_EQ(DM->Article.State(), DatasetState::Edit);
  DM->Article.Post();
  EXPECT_EQ(station.value("select id_categorie from article where code_barre = '1'"), "20");
  EXPECT_THROW(box->Choose(99), DatasetError);

  DM->type_produit.FilterBy("code=20");  // the list offers what its dataset shows
  EXPECT_THROW(box->Choose(10), DatasetError);
  box->Choose(20);
  EXPECT_EQ(seen, "Plats20");
}

TEST_F(ChoiceTest, AFreeBoxHoldsTheKeyOfTheLastChoice) {
  DBLookupComboBox* box = addCategory();
  open();
  EXPECT_TRUE(box->KeyValue().isNull());
  EXPECT_EQ(box->Text(), "");
  int changes = 0;
  box->OnChange = [&] { ++changes; };
  box->showPopup();
  box->view()->setCurrentIndex(box->model()->index(1, 0));
  QTest::keyClick(box->view(), Qt::Key_Return);
  station.settle();
  EXPECT_EQ(box->KeyValue(), Value(20));
  EXPECT_EQ(changes, 1);
  DM->type_produit.Reopen();
  station.settle();
  EXPECT_EQ(box->property("text").toString(), "20 · Plats");
  box->KeyValue(Value());
  EXPECT_EQ(box->Text(), "");
  EXPECT_EQ(changes, 1);
}

TEST_F(ChoiceTest, AListFollowsItsDatasetAndKeepsTheChosenKey) {
  DBLookupListBox* list = addPlaces();
  open();
  int clicks = 0;
  list->OnClick = [&] { ++clicks; };
  EXPECT_EQ(list->count(), 3);
  EXPECT_TRUE(list->KeyValue().isNull());
  station.tapAt(list->viewport(), list->visualItemRect(list->item(1)).center());
  EXPECT_EQ(list->KeyValue(), Value(2));
  EXPECT_EQ(DM->Endroit["Endoit"].text(), "Terrasse");
  EXPECT_EQ(clicks, 1);

  station.sql("delete from Endroit where ID_endroit = 1");
  DM->Endroit.Reopen();
  station.settle();
  EXPECT_EQ(list->count(), 2);
  EXPECT_EQ(list->currentItem()->text(), "Terrasse");
  EXPECT_EQ(list->KeyValue(), Value(2));
  EXPECT_EQ(clicks, 1);

  station.press(Qt::Key_Down);
  EXPECT_EQ(list->property("text").toString(), "Étage");
  EXPECT_EQ(clicks, 2);
  station.sql("delete from Endroit where ID_endroit = 3");
  DM->Endroit.Reopen();
  EXPECT_TRUE(list->KeyValue().isNull());
  station.settle();
  EXPECT_EQ(list->currentRow(), -1);
}

TEST_F(ChoiceTest, ADayIsTypedWholeOrPickedOrLeftEmpty) {
  auto* day = screen->add<DateEdit>("RzDateTimeEdit1");
  auto* other = screen->add<Edit>("RzEdit1");
  open();
  std::vector<std::string> changes;
  day->OnChange = [&] { changes.push_back(day->Date() ? formatDate(*day->Date()) : "-"); };
  day->SetFocus();
  station.type("05/03/2026");  // neither the year 2 nor the year 20
  EXPECT_EQ(changes, std::vector<std::string>{"05/03/2026"});
  day->Date(DateTime::of(2026, 4, 1, 12));
  EXPECT_EQ(day->Text(), "01/04/2026");
  EXPECT_EQ(day->Date(), DateTime::of(2026, 4, 1));
  day->selectAll();
  station.type("31/02/2026");
  station.answers({{testing::HasSubstr("31/02/2026")}});
  other->SetFocus();
  EXPECT_EQ(day->Text(), "01/04/2026");
  day->SetFocus();
  day->selectAll();
  station.type("7/3/25\n");
  EXPECT_EQ(changes.back(), "07/03/2025");
  day->Clear();
  EXPECT_EQ(changes.back(), "-");
  EXPECT_FALSE(day->Date());

  Clock::set([] { return DateTime::of(2026, 7, 14); });
  day->actions().last()->trigger();
  auto* calendar = day->findChild<QCalendarWidget*>();
  ASSERT_TRUE(calendar && calendar->isVisible());
  EXPECT_EQ(calendar->selectedDate(), QDate(2026, 7, 14));
  Q_EMIT calendar->clicked(QDate(2026, 7, 15));
  EXPECT_EQ(day->Text(), "15/07/2026");
  Clock::set({});
}

}  // namespace
}  // namespace tavoline
