#include "data/store/StoreContract.h"
#include "tools/store/Schema.h"

namespace tavoline::test {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

Value bytes(std::initializer_list<std::uint8_t> values) {
  return SharedBytes(std::make_shared<const Bytes>(values));
}

TEST_P(StoreContract, ValuesComeBackAsTheyWere) {
  const DateTime noon = DateTime::of(2024, 2, 29, 12, 30, 15, 7);
  struct Case {
    const char* table;
    const char* column;
    Value written;
    Value expected;
  };
  const Case cases[] = {
      {"article", "designation_article", "Crème d'été « œuf » 'ä\"\\ 😀", "Crème d'été « œuf » 'ä\"\\ 😀"},
      {"article", "designation_article", "", ""},
      {"article", "designation_article", " 007 ", " 007 "},
      {"article", "designation_article", 12, "12"},
      {"article", "designation_article", Value(), Value()},
      {"article", "qte_stock", -3, -3},
      {"article", "qte_stock", "42", 42},
      {"article", "qte_stock", Value(), Value()},
      {"article", "prix_vente", 0.1, 0.1},
      {"article", "prix_vente", 1e300, 1e300},
      {"article", "prix_vente", 120, 120.0},
      {"article", "prix_vente", "12,5", 12.5},
      {"client", "date_creation", noon, noon},
      {"client", "date_creation", DateTime::of(1899, 12, 30, 8), DateTime::of(1899, 12, 30, 8)},
      {"client", "date_creation", "05/06/2024", DateTime::of(2024, 6, 5)},
      {"client", "date_creation", Value(), Value()},
      {"article", "image", bytes({0, 255, 0, 39, 10}), bytes({0, 255, 0, 39, 10})},
      {"article", "image", bytes({}), bytes({})},
      {"article", "image", Value(), Value()},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(std::string(c.column) + " <- " + c.written.text());
    const auto store = kind->open();
    const RowId row = store->insert(c.table, {{c.column, c.written}});
    const std::string statement = "select " + std::string(c.column) + " from " + c.table;
    const Value found = read(*store, statement).at(0).at(0);
    EXPECT_EQ(found.isInteger(), c.expected.isInteger());
    EXPECT_EQ(found.isBytes(), c.expected.isBytes());
    EXPECT_EQ(found.isDateTime(), c.expected.isDateTime());
    EXPECT_EQ(found.isNull(), c.expected.isNull());
    if (found.isBytes() && c.expected.isBytes()) {
      EXPECT_EQ(*found.toBytes(), *c.expected.toBytes());
    } else {
      EXPECT_EQ(found, c.expected);
    }
    store->erase(c.table, row);
  }
}

TEST_P(StoreContract, AValueThatDoesNotConvertIsNotWritten) {
  const auto store = kind->open();
  EXPECT_THROW(store->insert("article", {{"prix_vente", "douze"}}), ConversionError);
  EXPECT_THROW(store->insert("article", {{"qte_stock", "x"}}), ConversionError);
  EXPECT_THROW(store->insert("client", {{"date_creation", "31/02/2024"}}), ConversionError);
  EXPECT_THAT(read(*store, "select * from article"), IsEmpty());
}

TEST_P(StoreContract, ColumnsLeftOutGetTheirDefault) {
  const auto store = kind->open();
  store->insert("commande", {{"n_commande", 1}});
  store->insert("commande", {{"n_commande", 2}, {"remise", Value()}});
  store->insert("commande", {});
  EXPECT_THAT(read(*store, "select n_commande, remise, HT from commande"),
              ElementsAre(ElementsAre(1, 0.0, Value()), ElementsAre(2, Value(), Value()),
                          ElementsAre(Value(), 0.0, Value())));
  EXPECT_EQ(store->catalog().find("COMMANDE")->find("Remise")->defaultValue, Value(0.0));
}

TEST_P(StoreContract, LikeDisregardsCaseInAllLetters) {
  const auto store = kind->open();
  for (const char* name : {"Élodie", "elodie", "ÉLAN", "a_b", "aXb", "100%"})
    store->insert("client", {{"nom_client", name}});
  store->insert("client", {{"nom_client", Value()}});
  const std::pair<const char*, std::vector<std::string>> cases[] = {
      {"él%", {"Élodie", "ÉLAN"}},  {"EL%", {"elodie"}}, {"a_b", {"a_b", "aXb"}},
      {"%E", {"Élodie", "elodie"}}, {"100%", {"100%"}},  {"", {}},
  };
  const auto snapshot = store->snapshot();
  for (const auto& [pattern, expected] : cases) {
    SCOPED_TRACE(pattern);
    sql::Parameters parameters;
    parameters["p"] = pattern;
    std::vector<std::string> found;
    for (const auto& row :
         read(*store, *snapshot, "select nom_client from client where nom_client like :p", parameters))
      found.push_back(row[0].text());
    EXPECT_EQ(found, expected);
  }
}

TEST_P(StoreContract, TheCatalogTellsTheTablesAsDeclared) {
  const auto store = kind->open();
  const Catalog& catalog = store->catalog();
  ASSERT_EQ(catalog.tables().size(), schema::tables().size());
  for (const schema::Table& declared : schema::tables()) {
    const TableInfo* const found = catalog.find(declared.name);
    ASSERT_NE(found, nullptr) << declared.name;
    ASSERT_EQ(found->columns.size(), declared.columns.size()) << declared.name;
    for (std::size_t i = 0; i < declared.columns.size(); ++i) {
      EXPECT_EQ(found->columns[i].name, declared.columns[i].name);
      EXPECT_EQ(found->columns[i].type, declared.columns[i].type) << declared.columns[i].name;
      EXPECT_EQ(found->columns[i].width, declared.columns[i].width) << declared.columns[i].name;
    }
  }
}

}  // namespace

}  // namespace tavoline::test
