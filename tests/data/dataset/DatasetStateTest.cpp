#include <gmock/gmock.h>

#include "data/dataset/DatasetFixture.h"
#include "data/value/Errors.h"

namespace tavoline {
namespace {

class States : public DatasetTest {
 protected:
  void SetUp() override {
    DatasetTest::SetUp();
    for (int i = 1; i <= 3; ++i) addPlace(*here, i, std::string(1, static_cast<char>('a' + i - 1)));
    places = std::make_unique<Connected>(here, "select * from Endroit");
    places->Open();
  }
  void TearDown() override {
    places.reset();
    DatasetTest::TearDown();
  }
  std::string stored() {
    Connected fresh(here, "select * from Endroit");
    fresh.Open();
    return walk(fresh, "Endoit");
  }
  std::unique_ptr<Dataset> places;
};

TEST_F(States, EditAndPostOnARowWaitingInInsertStateSaveIt) {
  places->Insert();
  (*places)["ID_endroit"] = 4;
  (*places)["Endoit"] = "d";
  places->Edit();
  EXPECT_EQ(places->State(), DatasetState::Insert);
  places->Post();
  EXPECT_EQ(stored(), "a b c d");
  EXPECT_EQ((*places)["endoit"].text(), "d");
  EXPECT_EQ(walk(*places, "Endoit"), "a b c d");
}

TEST_F(States, EditWhereNoRowIsVisibleAddsOne) {
  places->FilterBy("ID_endroit='9'");
  EXPECT_TRUE(places->Eof());
  EXPECT_TRUE((*places)["Endoit"].isNull());
  places->Edit();
  EXPECT_EQ(places->State(), DatasetState::Insert);
  (*places)["ID_endroit"] = 9;
  (*places)["Endoit"] = "neuf";
  places->Post();
  EXPECT_FALSE(places->Eof());
  EXPECT_EQ((*places)["Endoit"].text(), "neuf");
  EXPECT_EQ(stored(), "a b c neuf");
}

TEST_F(States, ARealChangeOfFilteredPostsAModifiedRowAndCancelsAnUntouchedOne) {
  places->Last();
  places->Edit();
  (*places)["Endoit"] = "C";
  places->FilterBy("ID_endroit>='2'");
  EXPECT_EQ(stored(), "a b C");
  EXPECT_EQ((*places)["ID_endroit"].text(), "2");

  places->Insert();
  places->Filtered(false);
  EXPECT_EQ(places->State(), DatasetState::Browse);
  EXPECT_EQ(stored(), "a b C");
  EXPECT_EQ((*places)["ID_endroit"].text(), "1");
}

TEST_F(States, TheFilteredThatItAlreadyHasMovesNothingAndEndsNothing) {
  places->Next();
  places->Edit();
  (*places)["Endoit"] = "B";
  places->Filtered(false);
  EXPECT_EQ(places->State(), DatasetState::Edit);
  EXPECT_EQ((*places)["ID_endroit"].text(), "2");
  EXPECT_EQ(stored(), "a b c");
}

TEST_F(States, CloseAndCancelDropWhatWasTyped) {
  places->Edit();
  (*places)["Endoit"] = "x";
  places->Reopen();
  EXPECT_EQ((*places)["Endoit"].text(), "a");
  places->Next();
  places->Insert();
  (*places)["Endoit"] = "y";
  EXPECT_EQ((*places)["Endoit"].text(), "y");
  places->Cancel();
  EXPECT_EQ((*places)["Endoit"].text(), "b");
  EXPECT_EQ(stored(), "a b c");
}

TEST_F(States, AFilterStandsThroughCloseAndOpen) {
  places->FilterBy("Endoit='c'");
  places->Reopen();
  EXPECT_EQ(walk(*places, "Endoit"), "c");
  places->Filtered(false);
  EXPECT_EQ((*places)["Endoit"].text(), "a");
  EXPECT_EQ(walk(*places, "Endoit"), "a b c");
}

TEST_F(States, AFilterThatCannotBeReadStaysOff) {
  places->Next();
  EXPECT_THROW(places->FilterBy("Endoit='l'escale'"), StatementError);
  EXPECT_FALSE(places->Filtered());
  EXPECT_THROW(places->FilterBy("ID_endroit='Label9'"), ConversionError);
  EXPECT_THROW(places->FilterBy("inconnu='1'"), StatementError);
  EXPECT_EQ((*places)["Endoit"].text(), "b");
}

TEST_F(States, MovingPastAnEndStaysOnTheRow) {
  EXPECT_FALSE(places->Bof());
  places->Prior();
  EXPECT_TRUE(places->Bof());
  EXPECT_EQ((*places)["Endoit"].text(), "a");
  places->Last();
  EXPECT_FALSE(places->Eof());
  places->Next();
  EXPECT_TRUE(places->Eof());
  EXPECT_EQ((*places)["Endoit"].text(), "c");
  places->Prior();
  EXPECT_FALSE(places->Eof());
  EXPECT_EQ((*places)["Endoit"].text(), "b");
}

TEST_F(States, DeleteMakesTheNextRowCurrentAndTheLastOneItsForerunner) {
  places->Next();
  places->Delete();
  EXPECT_EQ((*places)["Endoit"].text(), "c");
  places->Delete();
  EXPECT_EQ((*places)["Endoit"].text(), "a");
  places->Delete();
  EXPECT_TRUE(places->Eof());
  EXPECT_TRUE(places->Bof());
  EXPECT_THROW(places->Delete(), DatasetError);
  EXPECT_EQ(stored(), "");
}

TEST_F(States, ARefusedPostLeavesStateAndValues) {
  places->Insert();
  (*places)["ID_endroit"] = 1;
  (*places)["Endoit"] = "double";
  EXPECT_THROW(places->Post(), StoreError);
  EXPECT_EQ(places->State(), DatasetState::Insert);
  EXPECT_EQ((*places)["Endoit"].text(), "double");
  (*places)["ID_endroit"] = 4;
  places->Post();
  EXPECT_EQ(stored(), "a b c double");
}

TEST_F(States, FieldsConvertAndRefuse) {
  EXPECT_THROW((*places)["Endoit"] = "x", DatasetError);
  places->Edit();
  (*places)["ID_endroit"] = "12";
  EXPECT_EQ((*places)["ID_endroit"].toInteger(), 12);
  EXPECT_THROW((*places)["ID_endroit"] = "", ConversionError);
  EXPECT_THROW((*places)["ID_endroit"] = "douze", ConversionError);
  EXPECT_THROW((void)(*places)["absent"].get(), DatasetError);
  EXPECT_EQ((*places)["ID_endroit"].toInteger(), 12);
}

TEST_F(States, AClosedDatasetSaysSo) {
  places->Close();
  places->Close();
  EXPECT_FALSE(places->Active());
  EXPECT_THROW((void)(*places)["Endoit"].get(), DatasetError);
  EXPECT_THROW(places->Edit(), DatasetError);
  EXPECT_THROW(places->First(), DatasetError);
  places->FilterBy("Endoit='b'");
  places->Active(true);
  EXPECT_EQ((*places)["Endoit"].text(), "b");
}

TEST_F(States, AnUnchangedPostWritesNothing) {
  const auto before = here->snapshot();
  places->Edit();
  places->Post();
  EXPECT_TRUE(before->latest());
}

TEST_F(States, StoredDefaultsShowAfterAnInsert) {
  Connected orders(here, "select * from commande");
  orders.Open();
  orders.Insert();
  orders["n_commande"] = 1;
  orders.Post();
  EXPECT_EQ(orders["remise"].toFloat(), 0);
  EXPECT_TRUE(orders["tcc"].isNull());
}

// --- Bound controls
// ---------------------------------------------------------------------------------------------

class TypedText final : public DataListener {
 public:
  TypedText(DataSource& source, const char* field) : source_(source), field_(field) { source_.add(this); }
  ~TypedText() { source_.remove(this); }
  void dataEvent(DataEvent) override { ++events; }
  void giveUpPending() override {
    if (!typed) return;
    const std::string text = *typed;
    source_.dataset()[field_] = text;
    typed.reset();
  }
  void dropPending() override { typed.reset(); }
  std::optional<std::string> typed;
  int events = 0;

 private:
  DataSource& source_;
  const char* field_;
};

TEST_F(States, TypedTextIsGivenUpWhenAFieldIsReadOrTheRowPosted) {
  DataSource source("source", *places);
  TypedText input(source, "Endoit");
  places->Edit();
  input.typed = "lu";
  EXPECT_EQ((*places)["ID_endroit"].text(), "1");
  EXPECT_EQ((*places)["Endoit"].text(), "lu");
  input.typed = "écrit";
  places->Post();
  EXPECT_EQ(stored(), "écrit b c");

  places->Edit();
  input.typed = "filtré";
  places->Filtered(true);
  EXPECT_EQ(stored(), "filtré b c");

  places->Edit();
  input.typed = "perdu";
  places->Cancel();
  EXPECT_FALSE(input.typed);
  places->Edit();
  input.typed = "perdu";
  places->Reopen();
  EXPECT_FALSE(input.typed);
  EXPECT_EQ(stored(), "filtré b c");
}

TEST_F(States, TypedTextThatDoesNotConvertEndsTheOperation) {
  DataSource source("source", *places);
  TypedText input(source, "ID_endroit");
  places->Edit();
  input.typed = "abc";
  EXPECT_THROW(places->Post(), ConversionError);
  EXPECT_EQ(places->State(), DatasetState::Edit);
  EXPECT_EQ(stored(), "a b c");
}

TEST_F(States, DisabledControlsHearNothing) {
  DataSource source("source", *places);
  TypedText input(source, "Endoit");
  places->Next();
  EXPECT_GT(input.events, 0);
  places->DisableControls();
  input.events = 0;
  places->First();
  places->Reopen();
  EXPECT_EQ(input.events, 0);
}

}  // namespace
}  // namespace tavoline
