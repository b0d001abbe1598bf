#include "sales/SalesTest.h"

#include <QtWidgets/QApplication>
#include <fstream>

#include "data/value/Clock.h"
#include "sales/Commande_avnU.h"
#include "sales/commandeU.h"

namespace tavoline {

void SalesTest::SetUp() {
  Clock::set([] { return DateTime::of(2024, 7, 14, 12, 30, 15); });
  Messages::current().show = [this](const std::string& text, const std::string&) { said_.push_back(text); };
  Messages::current().confirm = [this](const std::string& text, const std::string& title) {
    asked_.push_back(title + ": " + text);
    return answer_;
  };
  std::ifstream in(TAVOLINE_FOLDER "cafeteria.sql");
  workstation_.sql("begin");
  for (std::string statement; std::getline(in >> std::ws, statement, ';');) store(statement);
  store("insert into operation(n_, code_utilisateur, id_caisse_active) values (1, 'ab12', 'C001')");
  workstation_.sql("commit");
  recording_ = std::make_shared<RecordingStore>(Store::open(TDM::ConnectionString));

  workstation_.create(MenuF);
  workstation_.start(recording_);
  workstation_.create(commandeF);
  workstation_.create(Commande_avnF);
  workstation_.create(liste_commandeF);
  workstation_.create(fac_clF);
  MenuF->setWindowState(Qt::WindowNoState);  // the offscreen display is smaller than a counter's
  MenuF->setGeometry(0, 0, 1024, 768);
  MenuF->show();
  MenuF->RzSplitter1->setEnabled(true);
}

void SalesTest::TearDown() {
  EXPECT_THAT(said_, ::testing::IsEmpty()) << "a box that the test did not foresee";
  Clock::set({});
}

std::string SalesTest::row(const std::string& select) {
  const Workstation::Rows rows = workstation_.sql(select);
  std::string values;
  if (rows.empty()) return values;
  for (const std::string& value : rows[0]) values += (&value == &rows[0][0] ? "" : "|") + value;
  return values;
}

void SalesTest::type(QLineEdit* input, const std::string& text) {
  press(input);
  input->selectAll();
  if (text.empty()) workstation_.press(Qt::Key_Delete);
  workstation_.type(text);
}

std::string SalesTest::printed(const std::function<void()>& launch, const Report& report) {
  during(launch, [] { QApplication::activeModalWidget()->close(); });
  return report.pages() ? report.pages()->dump() : "";
}

}  // namespace tavoline
