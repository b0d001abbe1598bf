#include "bench/Server.h"

#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <stdexcept>

#include "bench/Raw.h"
#include "support/Relay.h"

namespace tavoline::bench {
namespace {

namespace fs = std::filesystem;

constexpr std::chrono::microseconds kAway{500};

}  // namespace

bool onServer(const Scene& scene) {
  scene.enter();
  return !addressHere().empty();
}

FarScene::FarScene(const Scene& near) {
  near.enter();
  const BareServer server;
  relay_ = std::make_unique<test::Relay>(server.socket(), kAway);
  const fs::path data = fs::path(near.folder()).parent_path() / "far",
                 folder = data / std::to_string(near.orders());
  fs::create_directories(folder);
  std::ofstream(folder / "BDD.mdb") << "postgresql://" << server.user() << "@127.0.0.1:" << relay_->port()
                                    << '/' << server.database() << '\n';
  scene_ = std::make_unique<Scene>(data.string(), near.orders());
}

FarScene::~FarScene() = default;

LongRead::LongRead(const std::string& memoryProgram) {
  int ends[2];
  if (::pipe(ends) != 0) throw std::runtime_error("no pipe");
  told_ = ends[0];
  reader_ = ::fork();
  if (reader_ == 0) {
    ::dup2(ends[1], STDOUT_FILENO);
    ::close(ends[0]);
    ::execl(memoryProgram.c_str(), memoryProgram.c_str(), ".", "year", nullptr);
    ::_exit(127);
  }
  ::close(ends[1]);
  char line[64];
  if (::read(told_, line, sizeof line) <= 0) throw std::runtime_error("nobody reads the year");
}

LongRead::~LongRead() {
  ::kill(reader_, SIGKILL);
  ::waitpid(reader_, nullptr, 0);
  ::close(told_);
}

}  // namespace tavoline::bench
