#include "support/Cluster.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <libpq-fe.h>
#include <poll.h>
#include <pwd.h>
#include <sys/file.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <fstream>
#include <stdexcept>

namespace tavoline::test {

namespace {

namespace fs = std::filesystem;

const fs::path kPrograms = TAVOLINE_POSTGRES_PROGRAMS;
const fs::path kTemplate = TAVOLINE_CLUSTER_TEMPLATE;

void giveTo(uid_t user, gid_t group, const fs::path& folder) {
  const auto give = [&](const fs::path& path) {
    if (::lchown(path.c_str(), user, group) != 0) throw std::runtime_error("cannot give " + path.string());
  };
  give(folder);
  for (const auto& entry : fs::recursive_directory_iterator(folder)) give(entry.path());
}

// Nobody else has it at this moment.
int freePort() {
  const int socket = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  sockaddr_in address = {};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t size = sizeof address;
  const bool bound = ::bind(socket, reinterpret_cast<const sockaddr*>(&address), size) == 0;
  ::getsockname(socket, reinterpret_cast<sockaddr*>(&address), &size);
  ::close(socket);
  if (!bound) throw std::runtime_error("no port for the server");
  return ntohs(address.sin_port);
}

}  // namespace

// The engine does not work for root.
Cluster::User Cluster::serverUser() {
  if (::geteuid() != 0) return {::geteuid(), ::getegid()};
  for (const char* name : {"postgres", "nobody"})
    if (const passwd* found = ::getpwnam(name)) return {found->pw_uid, found->pw_gid};
  throw std::runtime_error("no user for the server");
}

Cluster::Cluster(Cluster* primary) : owner_(::getpid()), port_(freePort()) {
  const User user = serverUser();
  fs::permissions(folder(), fs::perms::owner_all | fs::perms::group_exec | fs::perms::others_exec);
  fs::create_directory(folder() / "socket");
  giveTo(user.user, user.group, folder() / "socket");
  fs::permissions(folder() / "socket", fs::perms::owner_all | fs::perms::group_exec | fs::perms::others_exec);
  if (primary) {
    follow(*primary);
  } else {
    makeEmpty(user, folder() / "data");
    start();
  }
}

// The first test of a build makes an empty cluster, the others begin with a copy of it.
void Cluster::makeEmpty(const User& user, const fs::path& data) const {
  const int lock = ::open((kTemplate.string() + ".lock").c_str(), O_CREAT | O_RDWR | O_CLOEXEC, 0600);
  ::flock(lock, LOCK_EX);
  if (!fs::exists(kTemplate)) {
    fs::create_directory(data);
    giveTo(user.user, user.group, data);
    run({"initdb", "-D", data.string(), "-U", "maitre", "--auth-local=trust", "--auth-host=reject", "-E",
         "UTF8", "--locale=C", "--no-sync", "--wal-segsize=1"});
    fs::copy(data, kTemplate.string() + ".partial", fs::copy_options::recursive);
    fs::rename(kTemplate.string() + ".partial", kTemplate);
  } else {
    fs::copy(kTemplate, data, fs::copy_options::recursive);
  }
  ::close(lock);
  fs::permissions(data, fs::perms::owner_all);
  giveTo(user.user, user.group, data);
}

void Cluster::follow(Cluster& primary) {
  const User user = serverUser();
  const fs::path data = folder() / "data";
  fs::remove_all(data);
  fs::create_directory(data);
  fs::permissions(data, fs::perms::owner_all);
  giveTo(user.user, user.group, data);
  run({"pg_basebackup", "-D", data.string(), "-h", (primary.folder() / "socket").string(), "-p",
       std::to_string(primary.port_), "-U", "maitre", "-R", "-c", "fast", "--no-sync"});
  start();
  primary.ask("ALTER SYSTEM SET synchronous_standby_names = '*'");
  primary.ask("SELECT pg_reload_conf()");
  while (primary.ask("SELECT count(*) FROM pg_stat_replication WHERE sync_state = 'sync'") != "1")
    ::poll(nullptr, 0, 10);
}

void Cluster::promote() {
  ask("SELECT pg_promote()");
  ask("ALTER SYSTEM RESET synchronous_standby_names");
  ask("SELECT pg_reload_conf()");
}

std::string Cluster::ask(const std::string& sql) const {
  PGconn* const connection = PQconnectdb(address("postgres").c_str());
  PGresult* const result = PQexec(connection, sql.c_str());
  const bool done = PQresultStatus(result) == PGRES_TUPLES_OK || PQresultStatus(result) == PGRES_COMMAND_OK;
  std::string said = !done                   ? PQerrorMessage(connection)
                     : PQntuples(result) > 0 ? PQgetvalue(result, 0, 0)
                                             : "";
  PQclear(result);
  PQfinish(connection);
  if (!done) throw std::runtime_error(said);
  return said;
}

Cluster::~Cluster() {
  if (::getpid() == owner_) crash();
}

pid_t Cluster::launch(const std::vector<std::string>& words) const {
  const User user = serverUser();
  const std::string program = (kPrograms / words.front()).string(), log = (folder() / "log").string();
  std::vector<char*> arguments;
  arguments.reserve(words.size() + 1);
  for (const std::string& word : words) arguments.push_back(const_cast<char*>(word.c_str()));
  arguments.push_back(nullptr);
  const pid_t parent = ::getpid();
  const pid_t child = ::fork();
  if (child != 0) return child;
  const int out = ::open(log.c_str(), O_CREAT | O_WRONLY | O_APPEND, 0644);
  ::dup2(out, STDOUT_FILENO);
  ::dup2(out, STDERR_FILENO);
  if (::geteuid() == 0 && (::setgid(user.group) != 0 || ::setuid(user.user) != 0)) ::_exit(126);
  ::prctl(PR_SET_PDEATHSIG, SIGQUIT);  // its immediate end, should the test be killed
  if (::getppid() != parent || ::chdir("/") != 0) ::_exit(126);
  ::execv(program.c_str(), arguments.data());
  ::_exit(127);
}

void Cluster::run(const std::vector<std::string>& words) const {
  int status = 0;
  ::waitpid(launch(words), &status, 0);
  if (status != 0) throw std::runtime_error(words.front() + " failed: " + bytesOf(folder() / "log"));
}

void Cluster::start() {
  server_ = launch({"postgres", "-D", (folder() / "data").string(), "-k", (folder() / "socket").string(),
                    "-p", std::to_string(port_), "-c", "listen_addresses=127.0.0.1", "-c", "fsync=off", "-c",
                    "shared_buffers=8MB", "-c", "max_connections=100", "-c", "autovacuum=off"});
  const std::string question = address("postgres") + "&connect_timeout=2";
  const auto until = std::chrono::steady_clock::now() + std::chrono::seconds(60);
  while (PQping(question.c_str()) != PQPING_OK) {
    if (::waitpid(server_, nullptr, WNOHANG) == server_ || std::chrono::steady_clock::now() > until)
      throw std::runtime_error("no server: " + bytesOf(folder() / "log"));
    ::poll(nullptr, 0, 10);
  }
}

void Cluster::end(int signal) {
  if (server_ == 0) return;
  ::kill(server_, signal);
  ::waitpid(server_, nullptr, 0);
  server_ = 0;
}

void Cluster::stop() {
  end(SIGINT);
}

void Cluster::crash() {
  end(SIGQUIT);
}

void Cluster::kill() {
  ::kill(server_, SIGSTOP);  // it begets nobody while they are listed
  const std::string server = std::to_string(server_);
  std::ifstream children("/proc/" + server + "/task/" + server + "/children");
  for (pid_t child = 0; children >> child;) ::kill(child, SIGKILL);
  end(SIGKILL);
}

std::string Cluster::address(const std::string& database, const Cluster& other) const {
  return "postgresql://maitre@/" + database + "?host=" + (folder() / "socket").string() + ',' +
         (other.folder() / "socket").string() + "&port=" + std::to_string(port_) + ',' +
         std::to_string(other.port_);
}

std::string Cluster::socket() const {
  return (folder() / "socket/.s.PGSQL.").string() + std::to_string(port_);
}

std::string Cluster::address(const std::string& database) const {
  return "postgresql://maitre@/" + database + "?host=" + (folder() / "socket").string() +
         "&port=" + std::to_string(port_);
}

}  // namespace tavoline::test
