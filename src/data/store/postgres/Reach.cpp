#include "data/store/postgres/Reach.h"

#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <clocale>
#include <cstdlib>
#include <string_view>

namespace tavoline::postgres {

namespace {

// What stands before an address's own words, and so gives way to them. A server that vanishes is noticed
// within ten seconds, a cable that is out while nobody asks within half a minute.
constexpr std::pair<const char*, const char*> kUsual[] = {
    {"connect_timeout", "5"},     {"tcp_user_timeout", "10000"}, {"keepalives_idle", "10"},
    {"keepalives_interval", "5"}, {"keepalives_count", "3"},     {"target_session_attrs", "read-write"}};

/// Words and values as the engine's library takes them.
struct Parameters {
  Parameters(const Address& address, const Words& over) {
    for (const auto& [word, value] : kUsual) add(word, value);
    add("fallback_application_name", name.c_str());
    add("dbname", address.uri.c_str());  // the whole address
    for (const auto& [word, value] : over) add(word.c_str(), value.c_str());
    add(nullptr, nullptr);
  }
  void add(const char* word, const char* value) {
    words.push_back(word);
    values.push_back(value);
  }

  std::string name = "tavoline " + std::to_string(::getpid());
  std::vector<const char*> words, values;
};

/// As long as this lives, the library says in English what it has no code for; sentences are chosen by it.
class InEnglish {
 public:
  ~InEnglish() {
    ::uselocale(before_);
    ::freelocale(english_);
  }
  InEnglish() = default;
  InEnglish(const InEnglish&) = delete;
  InEnglish& operator=(const InEnglish&) = delete;

 private:
  locale_t english_ = ::newlocale(LC_ALL_MASK, "C", nullptr);
  locale_t before_ = ::uselocale(english_);
};

// "FATAL:  53300: ..." as the engine says it when asked for its code.
std::string stateIn(const std::string& message) {
  for (auto at = message.find(":  "); at != message.npos; at = message.find(":  ", at + 1))
    if (message.size() > at + 8 && message[at + 8] == ':') return message.substr(at + 3, 5);
  return {};
}

bool ready(PGconn* connection, short events, std::chrono::milliseconds patience) {
  pollfd socket{PQsocket(connection), events, 0};
  return ::poll(&socket, 1, static_cast<int>(patience.count())) > 0;
}

}  // namespace

Handle connectTo(const Address& address, const Words& over) {
  const InEnglish said;
  const Parameters all(address, over);
  return Handle(PQconnectdbParams(all.words.data(), all.values.data(), 1));
}

std::pair<Handle, std::string> askForCode(const Address& address) {
  const InEnglish said;
  const Parameters all(address, {});
  Handle handle(PQconnectStartParams(all.words.data(), all.values.data(), 1));
  PQsetErrorVerbosity(handle.get(), PQERRORS_VERBOSE);
  PostgresPollingStatusType wants = PGRES_POLLING_WRITING;
  while (wants == PGRES_POLLING_READING || wants == PGRES_POLLING_WRITING) {
    if (!ready(handle.get(), wants == PGRES_POLLING_READING ? POLLIN : POLLOUT, patienceOf(handle.get())))
      break;
    wants = PQconnectPoll(handle.get());
  }
  if (wants == PGRES_POLLING_OK) return {std::move(handle), std::string()};
  return {nullptr, stateIn(PQerrorMessage(handle.get()))};
}

Words hostOf(PGconn* session) {
  const auto said = [](const char* word) { return std::string(word ? word : ""); };
  return {{"host", said(PQhost(session))},
          {"hostaddr", said(PQhostaddr(session))},
          {"port", said(PQport(session))}};
}

std::chrono::milliseconds patienceOf(PGconn* session) {
  struct Free {
    void operator()(PQconninfoOption* options) const { PQconninfoFree(options); }
  };
  const std::unique_ptr<PQconninfoOption, Free> options(PQconninfo(session));
  int seconds = 0;
  for (const PQconninfoOption* one = options.get(); one && one->keyword; ++one)
    if (std::string_view(one->keyword) == "connect_timeout" && one->val) seconds = std::atoi(one->val);
  return std::chrono::seconds(seconds > 0 ? std::max(seconds, 2) : 5);
}

Session askAfter(PGconn* session, const Address& address) {
  Words over = hostOf(session);
  over.emplace_back("target_session_attrs", "any");
  const Handle other = connectTo(address, over);
  if (PQstatus(other.get()) != CONNECTION_OK) {
    const bool refused =
        std::string_view(PQerrorMessage(other.get())).find("FATAL") != std::string_view::npos;
    return refused ? Session::Works : Session::Unknown;
  }
  const std::string process = std::to_string(PQbackendPID(session));
  const char* const values[] = {process.c_str()};
  if (!PQsendQueryParams(
          other.get(),
          "SELECT 1 FROM pg_stat_activity WHERE pid = $1::int AND coalesce(state, '') NOT LIKE "
          "'idle%'",
          1, nullptr, values, nullptr, nullptr, 0))
    return Session::Unknown;
  const auto until = std::chrono::steady_clock::now() + patienceOf(session);
  while (PQisBusy(other.get())) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(until - std::chrono::steady_clock::now());
    if (left.count() <= 0 || !ready(other.get(), POLLIN, left) || !PQconsumeInput(other.get()))
      return Session::Unknown;
  }
  PGresult* const answer = PQgetResult(other.get());
  const bool works = PQresultStatus(answer) != PGRES_TUPLES_OK || PQntuples(answer) > 0;
  PQclear(answer);
  return works ? Session::Works : Session::Rests;
}

}  // namespace tavoline::postgres
