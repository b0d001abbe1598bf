#include "data/value/Errors.h"
#include "toolkit/ToolkitFixture.h"
#include "toolkit/controls/Button.h"
#include "toolkit/controls/DBCheckBox.h"
#include "toolkit/controls/DBComboBox.h"
#include "toolkit/controls/DBEdit.h"
#include "toolkit/controls/DBText.h"
#include "toolkit/controls/Keypad.h"

namespace tavoline {
namespace {

using testing::HasSubstr;

class BoundEditTest : public ToolkitTest {
 protected:
  BoundEditTest() {
    name = screen->add<DBEdit>("DBEdit1", "DataSourceCaisse", "nom_caisse");
    balance = screen->add<DBEdit>("DBEdit2", "DataSourceCaisse", "solde");
    screen->add<Button>("RzBitBtn1");
    open();
  }

  void typeInto(DBEdit* edit, std::string_view text) {
    edit->SetFocus();
    edit->selectAll();
    station.type(text);
  }
  std::string stored(const char* column) {
    return station.value("select " + std::string(column) + " from caisse where ID_caise = 'C001'");
  }

  DBEdit* name;
  DBEdit* balance;
};

TEST_F(BoundEditTest, TheFirstKeyStartsTheEditAndTheTextWaitsUntilItIsAskedFor) {
  EXPECT_EQ(name->Text(), "Comptoir");
  typeInto(name, "B");
  EXPECT_EQ(DM->Caisse.State(), DatasetState::Edit);
  EXPECT_FALSE(DM->Caisse.Modified());  // typed, but not given up yet
  station.type("ar");
  EXPECT_EQ(DM->Caisse["nom_caisse"].text(), "Bar");
  EXPECT_TRUE(DM->Caisse.Modified());
  station.type(" nord");
  DM->Caisse.Post();
  EXPECT_EQ(stored("nom_caisse"), "Bar nord");
  EXPECT_EQ(name->Text(), "Bar nord");
}

TEST_F(BoundEditTest, WhatEndsTheRowDecidesWhatBecomesOfWaitingText) {
  const struct {
    const char* what;
    std::function<void()> end;
    std::string afterwards;
  } cases[] = {
      {"Post", [] { DM->Caisse.Post(); }, "Bar"},
      {"moving on", [] { DM->Caisse.Next(); }, "Bar"},
      {"a filter", [] { DM->Caisse.FilterBy("general='OUI'"); }, "Bar"},
      {"Refresh", [] { DM->Caisse.Refresh(); }, "Bar"},
      {"Cancel", [] { DM->Caisse.Cancel(); }, "Comptoir"},
      {"Close", [] { DM->Caisse.Reopen(); }, "Comptoir"},
  };
  for (const auto& each : cases) {
    SCOPED_TRACE(each.what);
    station.sql("update caisse set nom_caisse = 'Comptoir' where ID_caise = 'C001'");
    DM->Caisse.Filtered(false);
    DM->Caisse.Reopen();
    station.settle();
    typeInto(name, "Bar");
    each.end();
    EXPECT_EQ(DM->Caisse.State(), DatasetState::Browse);
    EXPECT_EQ(stored("nom_caisse"), each.afterwards);
    station.settle();
    EXPECT_EQ(name->text().toStdString(), DM->Caisse["nom_caisse"].text());
  }
}

TEST_F(BoundEditTest, TextThatDoesNotConvertEndsTheOperationAndGoesOnWaiting) {
  typeInto(balance, "douze");
  EXPECT_THROW(DM->Caisse.Post(), ConversionError);
  EXPECT_EQ(DM->Caisse.State(), DatasetState::Edit);
  EXPECT_EQ(balance->Text(), "douze");
  typeInto(balance, "12,5");
  DM->Caisse.Post();
  EXPECT_EQ(stored("solde"), "12.5");
}

TEST_F(BoundEditTest, ThePointOfEitherKeypadIsADecimalSign) {
  auto* keypad = screen->add<Keypad>("AdvTouchKeyboard1");
  keypad->show();
  typeInto(balance, "12");
  station.tap(keypad->findChild<QWidget*>("key."));
  station.type("5");
  DM->Caisse.Post();
  EXPECT_EQ(stored("solde"), "12.5");
  typeInto(balance, "7");
  station.press(Qt::Key_Period, Qt::KeypadModifier);
  station.type("25");
  DM->Caisse.Post();
  EXPECT_EQ(stored("solde"), "7.25");
  name->SetFocus();
  station.settle();
  EXPECT_EQ(balance->Text(), "7,25");
}

TEST_F(BoundEditTest, AnEmptiedInputWritesAnEmptyTextOrNoNumber) {
  typeInto(name, "\b");
  typeInto(balance, "\b");
  DM->Caisse.Post();
  EXPECT_EQ(station.value("select nom_caisse = '' and solde is null from caisse where ID_caise = 'C001'"),
            "1");
}

TEST_F(BoundEditTest, LeavingTheInputGivesItsTextUpAndShowsTheFieldsOwnForm) {
  typeInto(balance, "0012,50");
  EXPECT_EQ(DM->Caisse["solde"].toFloat(), 12.5);
  station.settle();
  EXPECT_EQ(balance->Text(), "0012,50");  // his own way of writing it, as long as he is there
  name->SetFocus();
  station.settle();
  EXPECT_EQ(balance->Text(), "12,5");

  typeInto(balance, "x");
  station.answers({{HasSubstr("x")}});
  name->SetFocus();
  EXPECT_EQ(balance->Text(), "x");
}

TEST_F(BoundEditTest, CodeThatWritesTheFieldAfterTheTypingHasTheLastWord) {
  typeInto(name, "Bar");
  DM->Caisse["solde"] = 5;  // another field: the typed text goes on waiting
  EXPECT_EQ(name->Text(), "Bar");
  DM->Caisse["nom_caisse"] = "Kiosque";
  DM->Caisse.Post();
  EXPECT_EQ(stored("nom_caisse"), "Kiosque");
  EXPECT_EQ(stored("solde"), "5.0");
  EXPECT_EQ(name->Text(), "Kiosque");
}

TEST_F(BoundEditTest, TypingOverNoRowStartsARowAndKeepsTheText) {
  DM->Caisse.FilterBy("general='SI'");
  station.settle();
  EXPECT_EQ(name->Text(), "");
  typeInto(name, "Kiosque");
  EXPECT_EQ(DM->Caisse.State(), DatasetState::Insert);
  DM->Caisse.Post();
  EXPECT_EQ(station.value("select count(*) from caisse where nom_caisse = 'Kiosque'"), "1");
}

TEST_F(BoundEditTest, TextByCodeIsInTheFieldAtOnceAndFiresTheChange) {
  int changes = 0;
  name->OnChange = [&] { ++changes; };
  name->Text("Kiosque");
  EXPECT_EQ(DM->Caisse.FieldValue("nom_caisse").text(), "Kiosque");
  EXPECT_EQ(changes, 1);
  name->Text("Kiosque");
  EXPECT_EQ(changes, 1);  // no change, no event
  name->OnChange = [] { throw Error("non"); };
  EXPECT_THROW(name->Text("Bar"), Error);
  EXPECT_THROW(balance->Text("douze"), ConversionError);
  EXPECT_EQ(balance->Text(), "1200,5");
}

TEST_F(BoundEditTest, AnInputThatTakesNoTypingStartsNoEdit) {
  name->setReadOnly(true);
  typeInto(name, "Bar");
  EXPECT_EQ(DM->Caisse.State(), DatasetState::Browse);
  name->setReadOnly(false);
  name->setMaxLength(3);
  typeInto(name, "Buvette");
  DM->Caisse.Post();
  EXPECT_EQ(stored("nom_caisse"), "Buv");
}

TEST_F(BoundEditTest, ARefusedEditIsToldAndShowsTheFieldAgain) {
  auto* total = screen->add<DBEdit>("DBEdit9", "DataSourceCS", "CS");
  open();
  station.answers({{HasSubstr("CS")}});
  typeInto(total, "7");
  EXPECT_EQ(total->Text(), "0");
}

TEST_F(BoundEditTest, DisplayNeverAsksForTypedText) {
  auto* shown = screen->add<DBText>("DBText1", "DataSourceCaisse", "solde");
  open();
  typeInto(balance, "-");  // on the way to a number; no box comes
  EXPECT_EQ(shown->property("text").toString(), "1200,5");
  EXPECT_THROW(shown->Caption(), ConversionError);  // a handler that reads the field does ask
}

TEST_F(BoundEditTest, AListOfTextsIsTypedAndChosenAndWaitsAlike) {
  auto* general = screen->add<DBComboBox>("RzDBComboBox1", "DataSourceCaisse", "general");
  general->setItems({"OUI", "NON"});
  open();
  int changes = 0;
  general->OnChange = [&] { ++changes; };
  EXPECT_EQ(general->Text(), "NON");
  general->SetFocus();
  station.press(Qt::Key_Up);
  EXPECT_EQ(DM->Caisse["general"].text(), "OUI");
  EXPECT_EQ(changes, 1);
  general->lineEdit()->selectAll();
  station.type("SI");
  DM->Caisse.Post();
  EXPECT_EQ(stored("general"), "SI");
  EXPECT_EQ(changes, 3);
  general->Text("NON");
  DM->Caisse.Cancel();
  EXPECT_EQ(general->Text(), "SI");
}

TEST_F(BoundEditTest, ACheckBoxWritesItsTwoTexts) {
  auto* general = screen->add<DBCheckBox>("RzDBCheckBox1", "DataSourceCaisse", "general");
  open();
  int clicks = 0;
  general->OnClick = [&] { ++clicks; };
  EXPECT_FALSE(general->Checked());
  station.tapAt(general, {12, general->height() / 2});
  EXPECT_EQ(DM->Caisse["general"].text(), "OUI");
  general->Checked(true);  // it is
  EXPECT_EQ(clicks, 1);
  general->Checked(false);
  DM->Caisse.Post();
  EXPECT_EQ(stored("general"), "NON");
  EXPECT_EQ(clicks, 2);
  DM->Caisse.Last();
  EXPECT_TRUE(general->Checked());
}

}  // namespace
}  // namespace tavoline
