#include "data/store/StoreContract.h"

namespace tavoline::test {

namespace {

using testing::ElementsAre;

TEST(SqliteStore, AnySqliteToolCanReadWhatIsWritten) {
  const StoreFile file;
  const auto store = file.open();
  store->insert("depence", {{"ID_depence", "12"},
                            {"date_depense", DateTime::of(2024, 1, 31, 9, 5)},
                            {"montant_dep", 1200},
                            {"type_depnce", "Dépense personnelle"},
                            {"image_fac", Value(std::make_shared<const Bytes>(Bytes{1, 2}))}});
  const std::pair<const char*, const char*> cases[] = {
      {"date_depense", "2024-01-31 09:05:00.000"},
      {"typeof(date_depense)", "text"},
      {"typeof(ID_depence)", "integer"},
      {"typeof(montant_dep)", "real"},
      {"hex(image_fac)", "0102"},
      {"type_depnce", "Dépense personnelle"},
      {"typeof(n_fac)", "null"},
  };
  for (const auto& [expression, expected] : cases)
    EXPECT_EQ(file.run("SELECT " + std::string(expression) + " FROM depence"), expected) << expression;
}

TEST(SqliteStore, WhatAForeignToolWroteInAnotherTypeIsShownAsItStands) {
  const StoreFile file;
  file.run(
      "INSERT INTO client (code_client, date_creation, nbr_vente, total_paiment) "
      "VALUES ('A', 'hier', 'deux', 3), ('B', '2024-06-05', 2.5, 'x')");
  const auto store = file.open();
  EXPECT_THAT(read(*store, "select date_creation, nbr_vente, total_paiment from client"),
              ElementsAre(ElementsAre("hier", "deux", 3.0), ElementsAre(DateTime::of(2024, 6, 5), 2.5, "x")));
}

TEST(SqliteStore, AFileWithoutALogGetsOne) {
  const StoreFile file;
  ASSERT_EQ(file.run("PRAGMA journal_mode = DELETE"), "delete");
  const auto store = file.open();
  const auto snapshot = store->snapshot();
  addPlace(*store, 1, "Salle");
  EXPECT_EQ(placesIn(*store, *snapshot), "");
  EXPECT_EQ(placesIn(*store), "Salle");
}

TEST(SqliteStore, AColumnThatTheFileLacksIsNoText) {
  const StoreFile file;
  const auto store = file.open();
  addPlace(*store, 1, "Salle");
  file.run("ALTER TABLE Endroit RENAME COLUMN Endoit TO Endroit");
  EXPECT_THROW(read(*store, "select * from Endroit"), StoreError);
  EXPECT_THROW(store->update("Endroit", 1, {{"Endoit", "Bar"}}), StoreError);
}

}  // namespace

}  // namespace tavoline::test
