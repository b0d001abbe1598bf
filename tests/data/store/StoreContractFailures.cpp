#include "data/store/StoreContract.h"

namespace tavoline::test {

namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;

TEST_P(StoreContract, ADuplicateKeyIsRefusedByName) {
  const auto store = kind->open();
  store->insert("article", {{"code_barre", "5"}, {"designation_article", "Café"}});
  const RowId other = store->insert("article", {{"code_barre", "6"}});

  const auto said = AllOf(HasSubstr("« code_barre »"), HasSubstr("« article »"), HasSubstr("existe déjà"));
  EXPECT_THAT(refusalOf([&] { store->insert("article", {{"code_barre", "5"}}); }), said);
  EXPECT_THAT(refusalOf([&] { store->update("article", other, {{"code_barre", "5"}}); }), said);

  EXPECT_EQ(read(*store, "select * from article").size(), 2u);
  store->insert("article", {{"code_barre", "7"}});
  EXPECT_EQ(read(*store, "select * from article").size(), 3u);
}

TEST_P(StoreContract, ATextTooWideIsRefusedWithItsColumnAndWidth) {
  struct Case {
    const char* table;
    const char* column;
    std::size_t width;
  };
  for (const auto& [table, column, width] :
       {Case{"relation_commande", "article", 120}, Case{"Table_", "table", 80}, Case{"commande", "login", 4},
        Case{"operation", "id_caisse_active", 20}}) {
    SCOPED_TRACE(column);
    const auto store = kind->open();
    std::string text;
    for (std::size_t i = 0; i < width; ++i) text += "é";
    store->insert(table, {{column, text}});
    EXPECT_THAT(
        refusalOf([&] {
          store->insert(table, {{column, text + "s"}});
        }),
        AllOf(HasSubstr("« " + std::string(column) + " »"), HasSubstr("« " + std::string(table) + " »"),
              HasSubstr(std::to_string(width) + " caractères")));
    EXPECT_EQ(read(*store, "select * from " + std::string(table)).size(), 1u);
  }
}

TEST_P(StoreContract, ARowThatAnotherWorkstationDeletedIsSaidToBeGone) {
  const auto here = kind->open(), there = kind->open();
  const RowId row = addPlace(*here, 1, "Salle");
  const auto old = here->snapshot();
  there->erase("Endroit", row);

  const auto said = AllOf(HasSubstr("« Endroit »"), HasSubstr("supprimée par un autre poste"));
  EXPECT_THAT(refusalOf([&] { here->update("Endroit", row, {{"Endoit", "Bar"}}); }), said);
  EXPECT_THAT(refusalOf([&] { here->update("Endroit", row, {}); }), said);
  EXPECT_THAT(refusalOf([&] { here->erase("Endroit", row); }), said);
  EXPECT_EQ(placesIn(*here, *old), "Salle");
  EXPECT_EQ(placesIn(*here), "");
}

TEST_P(StoreContract, NamesThatTheStoreDoesNotHaveAreToldInTheSentence) {
  const auto store = kind->open();
  EXPECT_THAT(refusalOf([&] { store->insert("facture", {}); }), HasSubstr("« facture »"));
  EXPECT_THAT(refusalOf([&] {
                store->insert("article", {{"couleur", "rouge"}});
              }),
              AllOf(HasSubstr("« couleur »"), HasSubstr("« article »")));
  EXPECT_THAT(refusalOf([&] { store->insert("article", {{"rid", 5}}); }), HasSubstr("« rid »"));
  EXPECT_THAT(read(*store, "select * from article"), IsEmpty());
}

}  // namespace

}  // namespace tavoline::test
