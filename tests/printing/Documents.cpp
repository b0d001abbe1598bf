#include "printing/Documents.h"

#include <QtCore/QFile>
#include <fstream>
#include <sstream>

namespace tavoline::report {

EstablishmentBlock testBlock() {
  EstablishmentBlock block;
  block.name = "CAFÉ DU PORT";
  block.street = "3, quai Nord";
  block.town = "16000 Alger";
  block.phone = "021 00 11 22";
  return block;
}

namespace {

constexpr const char* kArticles[] = {"CAFÉ", "THÉ À LA MENTHE", "JUS D'ORANGE PRESSÉ",
                                     "SANDWICH POULET GRILLÉ FROMAGE DOUBLE", "TARTE AU CITRON"};

}  // namespace

std::shared_ptr<const Template> shippedTemplate(const std::string& name) {
  QFile file(QString::fromStdString(":/templates/" + name + ".xml"));
  if (!file.open(QIODevice::ReadOnly)) {
    ADD_FAILURE() << "no template " << name;
    return nullptr;
  }
  return templateOf(file.readAll().toStdString());
}

Document documentOf(const std::string& name, Rows& rows) {
  const auto report = shippedTemplate(name);
  if (!report) return {};
  return rendered(report, std::vector<RecordSource*>(report->datasets.size(), &rows), testBlock());
}

Rows orderRows(int lines) {
  Rows::Records records;
  for (int i = 0; i < lines; ++i) {
    const int quantity = 1 + i % 3;
    const double price = i % 5 == 0 ? 12.5 : 40.0 * (1 + i % 5);
    records.push_back({{"n_commande", 1042},
                       {"table", "Terrasse 4"},
                       {"date_commande", DateTime::of(2024, 3, 9, 12, 45, 7)},
                       {"nom", "BENALI"},
                       {"code_client", "C07"},
                       {"client", "Société Horizon"},
                       {"Telephone", "0550 12 34 56"},
                       {"TVA", 19.5},
                       {"remi", 50},
                       {"tcc", 1234.5},
                       {"qte", quantity},
                       {"article", kArticles[i % 5]},
                       {"prix", price},
                       {"total", quantity * price}});
  }
  return Rows(records);
}

Rows journalRows(int orders) {
  Rows::Records records;
  for (int i = 1; i <= orders; ++i) {
    Rows::Record record{{"n_commande", i},
                        {"date_commande", DateTime::of(2024, 3, 1 + i % 28, 8, i % 60)},
                        {"id_caisse", "C1"},
                        {"client", i % 4 == 0 ? Value("Société Horizon") : Value()},
                        {"commentaire", i % 5 == 0 ? Value("sans sucre") : Value()}};
    if (i % 3 != 0) {
      record["HT"] = 100.25 * i;
      record["TVA"] = 7 * i;
      record["remi"] = i % 2 == 0 ? Value(10) : Value("");
      record["tcc"] = 107.25 * i;
    }
    records.push_back(record);
  }
  return Rows(records);
}

void expectDump(const Document& document, const std::string& name) {
  const std::string path = std::string(TAVOLINE_DUMP_DIR) + "/" + name + ".txt";
  if (qEnvironmentVariableIsSet("TAVOLINE_UPDATE_DUMPS")) std::ofstream(path) << document.dump();
  std::ifstream file(path);
  ASSERT_TRUE(file) << path << " cannot be read; TAVOLINE_UPDATE_DUMPS=1 writes it";
  std::ostringstream expected;
  expected << file.rdbuf();
  EXPECT_EQ(document.dump(), expected.str());
}

}  // namespace tavoline::report
