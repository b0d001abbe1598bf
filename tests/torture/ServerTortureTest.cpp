// The same on a server: workstations are killed, the server is, and the server whose standby then takes over.
// Every acknowledged write is there, none is there by half, and a workstation that lives goes on.
// TAVOLINE_TORTURE_RUNS and TAVOLINE_TORTURE_SEED as elsewhere; a fifth of the runs for the server, a
// twentieth for the standby.

#include <gmock/gmock.h>
#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <functional>
#include <optional>

#include "data/store/postgres/Connection.h"
#include "data/value/Errors.h"
#include "support/Cluster.h"
#include "support/StoreFile.h"
#include "tools/store/demo/Demo.h"
#include "tools/store/server/ServerCreation.h"
#include "torture/Life.h"
#include "torture/Verdict.h"

namespace tavoline::test {
namespace {

namespace fs = std::filesystem;
using testing::IsEmpty;

constexpr const char* kAdministrator = "maitre.mdb";

/// A store on a server, and a folder that is the working directory: BDD.mdb leads the workstations there,
/// another file its administrator.
class ServedCafe {
 public:
  explicit ServedCafe(bool withStandby = false) {
    fs::current_path(folder_.path());
    if (withStandby) standby.emplace(&server);
    const std::string address = withStandby ? server.address("cafe", *standby) : server.address("cafe");
    tool::createGenerated(address, {.orders = 200, .seed = 1, .pictures = false});
    std::ofstream(kAdministrator) << address << '\n';
    std::ofstream("BDD.mdb") << tool::workstationLine(postgres::parseAddress(address, address)) << '\n';
  }
  ~ServedCafe() { fs::current_path(before_); }
  ServedCafe(const ServedCafe&) = delete;
  ServedCafe& operator=(const ServedCafe&) = delete;

  Cluster server;
  std::optional<Cluster> standby;

 private:
  fs::path before_ = fs::current_path();
  TemporaryFolder folder_;
};

// A session outlives its workstation by what it was asked last.
void waitForSessionsToEnd() {
  const auto connection = tool::reachServer(*tool::serverAddress(kAdministrator));
  const postgres::Question others{
      "SELECT 1 FROM pg_stat_activity WHERE datname = 'cafe' AND pid <> pg_backend_pid() AND backend_type = "
      "'client backend'"};
  while (connection->ask(others).rows() > 0) ::poll(nullptr, 0, 2);
}

/// Serves for ever; where the server has gone, it waits until it is told to go on.
[[noreturn]] void outlive(int pipe, Chance& chance) {
  Station station(pipe, chance);
  for (;;) try {
      station.beginAnew();
      station.logIn();
      for (;;) station.serveSomebody();
    } catch (const StoreError&) {
      ::raise(SIGSTOP);
    } catch (const Error&) {  // it stands upon a gesture that was cut short, and finds empty what it needs
    }
}

struct Outlived {
  int ends = 0;
  std::size_t acknowledged = 0, inFlight = 0;
};

/// One workstation outlives so many ends of the server.
Outlived outliveAll(int runs, const std::function<void()>& end, const std::function<void()>& comeBack) {
  Chance chance(static_cast<unsigned>(setting("TAVOLINE_TORTURE_SEED", 1)));
  Witness witness(kAdministrator);
  Life life(outlive, chance);
  Outlived sum;
  for (; sum.ends < runs && !testing::Test::HasFailure(); ++sum.ends) {
    SCOPED_TRACE("end " + std::to_string(sum.ends));
    JournalReader journal;
    life.live(journal, chance);
    end();
    EXPECT_TRUE(life.stopped(journal));
    EXPECT_FALSE(journal.acknowledged.empty()) << "it did not go on";
    comeBack();
    EXPECT_THAT(witness.verdict(journal), IsEmpty());
    EXPECT_THAT(damage(kAdministrator), IsEmpty());
    sum.acknowledged += journal.acknowledged.size();
    sum.inFlight += journal.uncertain.empty() ? 0 : 1;
    life.goOn();
  }
  return sum;
}

int runs(int share, int least) {
  return std::max(setting("TAVOLINE_TORTURE_RUNS", 5) / share, least);
}

TEST(ServerTorture, AKilledWorkstationLosesNothingThatWasAcknowledged) {
  const ServedCafe cafe;
  Chance chance(static_cast<unsigned>(setting("TAVOLINE_TORTURE_SEED", 1)));
  Witness witness(kAdministrator);
  std::size_t acknowledged = 0, inFlight = 0;
  int deaths = 0;
  for (; deaths < runs(1, 1) && !HasFailure(); ++deaths) {
    SCOPED_TRACE("death " + std::to_string(deaths));
    const JournalReader journal = lifeAndDeath(work, chance);
    waitForSessionsToEnd();
    EXPECT_THAT(witness.verdict(journal), IsEmpty());
    EXPECT_THAT(damage(kAdministrator), IsEmpty());
    acknowledged += journal.acknowledged.size();
    inFlight += journal.diedWriting() ? 1 : 0;
  }
  EXPECT_GT(acknowledged, 0U);
  std::printf("%d deaths, %zu of them in the middle of a write; %zu acknowledged writes found again\n",
              deaths, inFlight, acknowledged);
}

TEST(ServerTorture, AKilledServerKeepsWhatItAcknowledged) {
  ServedCafe cafe;
  const Outlived sum = outliveAll(
      runs(5, 2), [&] { cafe.server.kill(); }, [&] { cafe.server.start(); });
  std::printf("%d ends of the server, %zu of them amid a write; %zu acknowledged writes found again\n",
              sum.ends, sum.inFlight, sum.acknowledged);
}

TEST(ServerTorture, AStandbyThatTakesOverHasWhatWasAcknowledged) {
  ServedCafe cafe(true);
  Cluster *primary = &cafe.server, *standby = &*cafe.standby;
  const Outlived sum = outliveAll(
      runs(20, 1), [&] { primary->kill(); },
      [&] {
        standby->promote();
        std::swap(primary, standby);
        standby->follow(*primary);
      });
  std::printf(
      "%d servers lost, %zu of them amid a write; %zu acknowledged writes found again in their standbys\n",
      sum.ends, sum.inFlight, sum.acknowledged);
}

}  // namespace
}  // namespace tavoline::test
