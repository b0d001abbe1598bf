#include <gtest/gtest.h>

#include "data/store/Store.h"

namespace tavoline {

namespace {

TEST(ConnectionString, GivesItsPartsByName) {
  const ConnectionString whole(
      "Provider=Microsoft.Jet.OLEDB.4.0;User ID=Admin;Data Source=BDD.mdb;Mode=Share Deny None;"
      "Jet OLEDB:System database=\"\";Jet OLEDB:Database Password=rainandshine20042011;"
      "Jet OLEDB:Don't Copy Locale on Compact=False;Jet OLEDB:SFP=False");
  struct Case {
    ConnectionString connection;
    const char* key;
    const char* value;
  };
  const Case cases[] = {
      {whole, "Data Source", "BDD.mdb"},
      {whole, "data source", "BDD.mdb"},
      {whole, "Mode", "Share Deny None"},
      {whole, "Jet OLEDB:Database Password", "rainandshine20042011"},
      {whole, "Jet OLEDB:System database", ""},
      {whole, "Jet OLEDB:Don't Copy Locale on Compact", "False"},
      {whole, "Jet OLEDB:SFP", "False"},
      {whole, "Source", ""},
      {ConnectionString(" Data Source = a b.mdb ; X = 'p;=''q' ;"), "Data Source", "a b.mdb"},
      {ConnectionString(" Data Source = a b.mdb ; X = 'p;=''q' ;"), "x", "p;='q"},
      {ConnectionString("X=\"a;b\" trailing;Y=2"), "Y", "2"},
      {ConnectionString("X=\"unended;Y=2"), "X", "unended;Y=2"},
      {ConnectionString(";;alone;Y=a=b"), "Y", "a=b"},
      {ConnectionString(""), "Y", ""},
  };
  for (const Case& c : cases) EXPECT_EQ(c.connection.get(c.key), c.value) << c.key;
}

}  // namespace

}  // namespace tavoline
