// Several workstations, each a process, serve the tables of one store at the same time: a file, and a server.
// TAVOLINE_CROWD and TAVOLINE_CROWD_ORDERS say how many, and how many orders each.

#include <gmock/gmock.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <map>
#include <optional>
#include <random>

#include "data/value/Errors.h"
#include "gestures/Waiter.h"
#include "support/Cluster.h"
#include "support/PassingStore.h"
#include "support/StoreFile.h"
#include "tools/store/demo/Demo.h"
#include "tools/store/server/ServerCreation.h"

namespace tavoline::test {
namespace {

namespace fs = std::filesystem;

int atLeast(const char* name, int otherwise) {
  const char* value = std::getenv(name);
  return value ? std::atoi(value) : otherwise;
}

/// Counts the rows that the store said it had taken, less those that it said it had deleted.
class Counting : public PassingStore {
 public:
  using PassingStore::PassingStore;
  std::map<std::string, long> rows;

 protected:
  void passWrite(const Request& request, const std::function<RowId()>& pass) override {
    pass();
    if (request.kind == Request::Insert) ++rows[request.table];
    if (request.kind == Request::Erase) --rows[request.table];
  }
};

/// Serves some orders; writes into `report` a line for each table and for each refusal.
void serveAmongOthers(unsigned seed, int orders, const fs::path& report) {
  const auto store = std::make_shared<Counting>(Store::open(TDM::ConnectionString));
  TDM dm(store);
  const Menu menu = Menu::of(dm);
  std::mt19937 random(seed);
  const auto any = [&](const std::vector<std::string>& all) { return all[random() % all.size()]; };
  std::ofstream told(report);
  for (int served = 0; served < orders; ++served) {
    Waiter waiter(dm, menu);
    try {
      if (!waiter.takeTable(any(menu.tables))) continue;
      for (auto taps = 1 + random() % 4; taps > 0; --taps) waiter.tap(any(menu.articles));
      if (!waiter.hasLines())
        waiter.leave();
      else
        random() % 2 ? waiter.save() : waiter.closeTable();
    } catch (const Error& refusal) {
      told << "! " << refusal.what() << '\n';
      for (Dataset* each : {&dm.commande, &dm.relation_commande, &dm.relation_commande1, &dm.Table_})
        each->Cancel();
    }
    dm.GestureDone();
  }
  for (const auto& [table, rows] : store->rows) told << table << ' ' << rows << '\n';
}

struct Crowd {
  std::map<std::string, long> rows;  // acknowledged by all
  std::vector<std::string> refusals;
};

Crowd letThemWork(const fs::path& folder) {
  const int stations = atLeast("TAVOLINE_CROWD", 4), orders = atLeast("TAVOLINE_CROWD_ORDERS", 8);
  std::vector<pid_t> children;
  for (int station = 0; station < stations; ++station) {
    const pid_t child = ::fork();
    if (child == 0) {
      try {
        serveAmongOthers(static_cast<unsigned>(station + 1), orders, folder / std::to_string(station));
        ::_exit(0);
      } catch (const std::exception& failure) {
        std::fprintf(stderr, "a workstation failed: %s\n", failure.what());
        ::_exit(1);
      }
    }
    children.push_back(child);
  }
  Crowd crowd;
  for (std::size_t station = 0; station < children.size(); ++station) {
    int status = 0;
    ::waitpid(children[station], &status, 0);
    EXPECT_EQ(status, 0);
    std::ifstream report(folder / std::to_string(station));
    for (std::string line; std::getline(report, line);) {
      if (line.starts_with("! "))
        crowd.refusals.push_back(line);
      else if (const auto blank = line.find(' '); blank != line.npos)
        crowd.rows[line.substr(0, blank)] += std::stol(line.substr(blank));
    }
  }
  return crowd;
}

class CrowdTest : public testing::TestWithParam<const char*> {};

TEST_P(CrowdTest, EveryAcknowledgedRowIsThereOnceAndTheOnlyRefusalsAreTold) {
  const bool served = std::string(GetParam()) == "server";
  const TemporaryFolder folder;
  std::optional<Cluster> cluster;
  const auto before = fs::current_path();
  fs::current_path(folder.path());
  if (served) {
    cluster.emplace();
    const std::string address = cluster->address("cafe");
    tool::createGenerated(address, {.orders = 100, .seed = 1, .pictures = false});
    std::ofstream("BDD.mdb") << tool::workstationLine(postgres::parseAddress(address, address)) << '\n';
  } else {
    tool::createGenerated("BDD.mdb", {.orders = 100, .seed = 1, .pictures = false});
  }
  const auto count = [](const std::string& table) {
    return read(*Store::open(TDM::ConnectionString), "select Count(*) as n from " + table)[0][0].toInteger();
  };
  const std::int64_t orders = count("commande"), lines = count("relation_commande");
  Crowd crowd = letThemWork(folder.path());
  EXPECT_GT(crowd.rows["commande"], 0);
  EXPECT_GT(crowd.rows["relation_commande"], 0);
  EXPECT_EQ(count("commande"), orders + crowd.rows["commande"]);
  EXPECT_EQ(count("relation_commande"), lines + crowd.rows["relation_commande"]);
  // Two that take a number at the same moment; two at one table, of whom one removes what the other changes.
  for (const std::string& refusal : crowd.refusals)
    EXPECT_THAT(refusal,
                testing::AnyOf(testing::HasSubstr("a pris ce numéro"), testing::HasSubstr("supprimée par")));
  std::printf("%ld orders, %ld lines, %zu refusals\n", crowd.rows["commande"],
              crowd.rows["relation_commande"], crowd.refusals.size());
  fs::current_path(before);
}

INSTANTIATE_TEST_SUITE_P(Stores, CrowdTest, testing::Values("file", "server"));

}  // namespace
}  // namespace tavoline::test
