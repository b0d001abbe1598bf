// What a hand does to the file of a store while a workstation works on it, or after one was killed.

#include <gmock/gmock.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <random>

#include "data/DMU.h"
#include "data/value/Clock.h"
#include "data/value/Errors.h"
#include "support/StoreFile.h"
#include "tools/store/Backup.h"
#include "tools/store/Check.h"
#include "tools/store/demo/Demo.h"

namespace tavoline::test {
namespace {

namespace fs = std::filesystem;

/// A workstation that writes without end; it tells each write, and why it ends.
struct Writer {
  Writer() {
    int ends[2];
    if (::pipe(ends) != 0) throw std::runtime_error("no pipe");
    process = ::fork();
    told = ends[0];
    if (process == 0) work(ends[1]);
    ::close(ends[1]);
  }
  ~Writer() {
    ::kill(process, SIGKILL);
    ::waitpid(process, nullptr, 0);
    ::close(told);
  }
  [[noreturn]] static void work(int line) {
    try {
      for (const auto store = Store::open(TDM::ConnectionString);; store->idle())
        for (int place = 0; place < 9 && ::write(line, "+", 1) == 1; ++place)
          store->insert("Endroit", {{"Endoit", "Terrasse"}});
    } catch (const std::exception& failure) {
      ::dprintf(line, "%s", failure.what());
    }
    ::_exit(0);
  }
  /// Up to so many writes, or to its end; what else it said.
  std::string hear(unsigned writes) const {
    std::string said;
    for (char each = 0; writes > 0 && ::read(told, &each, 1) == 1;)
      each == '+' ? void(--writes) : said.push_back(each);
    return said;
  }
  pid_t process = 0;
  int told = -1;
};

TEST(HandsTest, AFilePutBesideALogOrUnderAWorkstationStaysAsItWasPutAndARestoreIsTheCopy) {
  const fs::path before = fs::current_path();
  const TemporaryFolder folder;
  fs::current_path(folder.path());
  tool::createGenerated("BDD.mdb", {.orders = 20, .seed = 1, .pictures = false});
  tool::backupStore("BDD.mdb", "copie.mdb");
  const std::string copy = bytesOf("copie.mdb");
  std::mt19937 chance(1);
  int refused = 0;
  for (int run = 0; run < 16; ++run) {
    SCOPED_TRACE(run);
    std::optional<Writer> writer(std::in_place);
    EXPECT_EQ(writer->hear(2 + chance() % 40), "");
    fs::copy_file("copie.mdb", "neuve.mdb");
    const bool killed = run % 2 == 0, logToo = run % 4 == 1;
    if (killed) writer.reset();
    for (const char* kind : {"", "-wal", "-shm"})
      if (logToo) fs::rename(std::string("BDD.mdb") + kind, std::string("ancienne") + kind);
    fs::rename("neuve.mdb", "BDD.mdb");
    if (!killed) {
      EXPECT_THAT(writer->hear(1'000'000), testing::HasSubstr("a été enlevé ou remplacé"));
    } else {
      try {
        Store::open(TDM::ConnectionString);
      } catch (const StoreError&) {
        ++refused;
      }
    }
    EXPECT_EQ(bytesOf("BDD.mdb"), copy) << "something was played into it";
    Clock::set([run] { return DateTime::of(2026, 11, 24, 3, 0, run); });  // names what is moved aside
    tool::restoreStore("copie.mdb", "BDD.mdb");
    EXPECT_THAT(tool::checkStore("BDD.mdb"), testing::IsEmpty());
    EXPECT_EQ(read(*Store::open(TDM::ConnectionString),
                   "select * from Endroit where Endoit='Terrasse' and id_endroit is null")
                  .size(),
              0U);
  }
  EXPECT_GT(refused, 0);
  Clock::set({});
  fs::current_path(before);
}

}  // namespace
}  // namespace tavoline::test
