#include "data/store/postgres/Connection.h"

#include <poll.h>

#include <algorithm>
#include <cerrno>
#include <ctime>
#include <tuple>
#include <utility>

#include "data/store/postgres/Bound.h"
#include "data/value/Text.h"

namespace tavoline::postgres {

namespace {

using namespace std::chrono_literals;

constexpr int keptStatements = 200;
constexpr const char* tooManyConnections = "53300";
// Of an attempt that was waited for.
constexpr auto longAttempt = 1s, refusalHolds = 1s;

// What every session needs. A commit that is acknowledged is on the disk, whatever the server's settings. A
// workstation that vanished without a word is noticed within half a minute, with all that it held.
constexpr const char* kSession =
    "SET client_encoding = 'UTF8'; SET search_path = public; SET lock_timeout = '4s'; "
    "SET statement_timeout = '110s'; SET extra_float_digits = 1; SET jit = off; "
    "SET max_parallel_workers_per_gather = 0; SET standard_conforming_strings = on; "
    "SET tcp_keepalives_idle = 10; SET tcp_keepalives_interval = 5; SET tcp_keepalives_count = 3; "
    "SELECT set_config('synchronous_commit', 'on', false) WHERE "
    "current_setting('synchronous_commit') IN ('off', 'local')";

// What a connection has answered is taken for a sign of life as long.
constexpr auto signOfLife = 5s;

std::uint64_t roundTripsMade = 0;

// Goes on while the computer sleeps.
std::chrono::nanoseconds sinceBoot() {
  timespec now = {};
  ::clock_gettime(CLOCK_BOOTTIME, &now);
  return std::chrono::seconds(now.tv_sec) + std::chrono::nanoseconds(now.tv_nsec);
}

}  // namespace

Connection::Connection(std::shared_ptr<Server> server) : server_(std::move(server)) {
  connect();
  PQsetNoticeReceiver(handle_.get(), notice, this);
  PQsetnonblocking(handle_.get(), 1);
  patience_ = patienceOf(handle_.get());
  silences_ = server_->silences;
  execute(kSession);
}

std::uint64_t Connection::roundTrips() {
  return roundTripsMade;
}

void Connection::connect() {
  Server& server = *server_;
  const auto began = std::chrono::steady_clock::now();
  if (server.refusal && began < server.refusedUntil) throw StoreError(*server.refusal);
  if (address().several && !server.lastHost.empty()) handle_ = connectTo(address(), server.lastHost);
  if (PQstatus(handle_.get()) != CONNECTION_OK) handle_ = connectTo(address());
  std::string state;
  const std::string said(trimmed(PQerrorMessage(handle_.get())));
  if (PQstatus(handle_.get()) != CONNECTION_OK && said.find("FATAL") != said.npos)
    std::tie(handle_, state) = askForCode(address());  // what it refused a moment ago it may grant
  server.reachable = PQstatus(handle_.get()) == CONNECTION_OK;
  server.full = state == tooManyConnections;
  if (server.reachable) {
    server.refusal.reset();
    server.lastHost = hostOf(handle_.get());
    return;
  }
  try {
    failToConnect(address(), state, said);
  } catch (const StoreError& refusal) {
    const auto now = std::chrono::steady_clock::now();
    if (now - began > longAttempt) {
      server.refusal = refusal;
      server.refusedUntil = now + refusalHolds;
    }
    throw;
  }
}

std::string Connection::parameter(const char* name) const {
  const char* const value = PQparameterStatus(handle_.get(), name);
  return value ? value : "";
}

void Connection::notice(void* self, const PGresult* result) {
  const char* const severity = PQresultErrorField(result, PG_DIAG_SEVERITY_NONLOCALIZED);
  if (severity && (std::string_view(severity) == "FATAL" || std::string_view(severity) == "PANIC"))
    static_cast<Connection*>(self)->ended_ = true;
}

bool Connection::failed() const {
  return ended_ || silences_ != server_->silences || PQstatus(handle_.get()) != CONNECTION_OK ||
         PQtransactionStatus(handle_.get()) == PQTRANS_INERROR;
}

// A server that has gone leaves its last word, or the end of the stream, in the socket.
bool Connection::alive() noexcept {
  if (silences_ != server_->silences) return false;
  try {
    drain();
  } catch (const StoreError&) {
    return false;
  }
  for (int looks = 0; looks < 2 && !ended_ && PQstatus(handle_.get()) == CONNECTION_OK; ++looks) {
    pollfd socket{PQsocket(handle_.get()), POLLIN, 0};
    if (::poll(&socket, 1, 0) <= 0) break;
    if (!PQconsumeInput(handle_.get())) return false;
    static_cast<void>(PQisBusy(handle_.get()));  // reads what has come
  }
  return !ended_ && PQstatus(handle_.get()) == CONNECTION_OK;
}

bool Connection::answers() try {
  if (!alive() || losses_ != server_->losses) return false;
  if (sinceBoot() - heard_ > signOfLife) ask(Question{"SELECT 1"});
  return true;
} catch (const LostConnection&) {
  return false;
}

void Connection::lost() {
  const std::string said(trimmed(PQerrorMessage(handle_.get())));
  ended_ = true;
  ++server_->losses;
  failLost(address(), said);
}

// Until the socket has something, or takes something. A server may be at work in silence; whether it is, only
// it can tell.
void Connection::await(short events) {
  const auto began = std::chrono::steady_clock::now();
  for (int rests = 0; PQstatus(handle_.get()) == CONNECTION_OK;) {
    pollfd socket{PQsocket(handle_.get()), events, 0};
    const int ready = ::poll(&socket, 1, static_cast<int>(patience_.count()));
    if (ready > 0 || (ready < 0 && errno != EINTR)) return;  // what is wrong comes as a result
    if (ready < 0) continue;
    if (std::chrono::steady_clock::now() - began > limit_) lost();
    const Session session = askAfter(handle_.get(), address());
    if (session == Session::Unknown) fallSilent();
    rests = session == Session::Rests ? rests + 1 : 0;
    if (rests < 2) continue;
    ++server_->silences;  // its answer has gone astray, and so will those of the connections of its age
    lost();
  }
}

void Connection::fallSilent() {
  ++server_->silences;
  server_->reachable = false;
  try {
    failToConnect(address(), {}, "no answer");
  } catch (const StoreError& refusal) {
    server_->refusal = refusal;
    server_->refusedUntil = std::chrono::steady_clock::now() + refusalHolds;
  }
  lost();
}

void Connection::flush() {
  for (int left = PQflush(handle_.get()); left > 0; left = PQflush(handle_.get())) {
    await(POLLIN | POLLOUT);
    if (!PQconsumeInput(handle_.get())) return;
  }
}

PGresult* Connection::result() {
  while (PQisBusy(handle_.get())) {
    await(POLLIN);
    if (!PQconsumeInput(handle_.get())) break;  // the reason comes as a result
  }
  return PQgetResult(handle_.get());
}

void Connection::drain() {
  if (!std::exchange(told_, false)) return;
  for (Answer passed(result()); passed.result(); passed = Answer(result())) {
  }
}

void Connection::tell(const std::string& text) noexcept {
  try {
    drain();
    told_ = PQsendQuery(handle_.get(), text.c_str()) == 1;
  } catch (const StoreError&) {
    ended_ = true;
  }
}

void Connection::execute(const std::string& statements) {
  drain();
  ++roundTripsMade;
  if (!PQsendQuery(handle_.get(), statements.c_str())) lost();
  flush();
  finish();
}

// Up to the end of what was sent, or to where the engine waits for rows.
void Connection::finish() {
  Answer failure;
  for (Answer answer(result()); answer.result(); answer = Answer(result())) {
    const ExecStatusType status = PQresultStatus(answer.result());
    if (status == PGRES_FATAL_ERROR && !failure.result()) failure = std::move(answer);
    if (status == PGRES_COPY_IN || status == PGRES_COPY_OUT) return;
  }
  if (PQstatus(handle_.get()) != CONNECTION_OK) lost();
  heard();
  if (failure.result()) fail(address(), failure.result());
}

void Connection::heard() {
  heard_ = sinceBoot();
  losses_ = server_->losses;
}

void Connection::copyInto(const std::string& table, const std::string& rows) {
  execute("COPY " + table + " FROM STDIN");
  constexpr std::size_t piece = 1 << 20;
  for (std::size_t at = 0; at < rows.size(); at += piece) {
    const int size = static_cast<int>(std::min(piece, rows.size() - at));
    if (PQputCopyData(handle_.get(), rows.data() + at, size) != 1) lost();
    flush();
  }
  if (PQputCopyEnd(handle_.get(), nullptr) != 1) lost();
  flush();
  finish();
}

// A statement is prepared when it comes for the second time; both stand in the same round trip. Gives
// whether a preparation goes before it.
bool Connection::send(const Question& question, const Bound& bound) {
  PGconn* const connection = handle_.get();
  Known& known = known_[question.text];
  if (++known.uses == 1) {
    if (!PQsendQueryParams(connection, question.text.c_str(), bound.count(), nullptr, bound.pointers(),
                           bound.lengths(), bound.formats(), 1))
      lost();
    return false;
  }
  const bool first = known.name.empty();
  if (first) {
    known.name = "t" + std::to_string(++prepared_);
    if (!PQsendPrepare(connection, known.name.c_str(), question.text.c_str(), 0, nullptr)) lost();
  }
  if (!PQsendQueryPrepared(connection, known.name.c_str(), bound.count(), bound.pointers(), bound.lengths(),
                           bound.formats(), 1))
    lost();
  return first;
}

// The answer to one statement of a pipeline.
Answer Connection::take() {
  Answer taken(result());
  if (!taken.result()) lost();
  while (Answer(result()).result()) {
  }
  if (PQresultStatus(taken.result()) != PGRES_FATAL_ERROR) return taken;
  const char* const severity = PQresultErrorField(taken.result(), PG_DIAG_SEVERITY_NONLOCALIZED);
  if (!severity || std::string_view(severity) != "ERROR") lost();
  return taken;
}

std::vector<Answer> Connection::ask(const std::vector<Question>& questions) {
  drain();
  if (known_.size() > keptStatements) {
    execute("DEALLOCATE ALL");
    known_.clear();
  }
  std::vector<Bound> bounds;  // what cannot be sent is refused before anything is
  bounds.reserve(questions.size());
  for (const Question& question : questions) bounds.emplace_back(address(), question.values);
  ++roundTripsMade;
  if (!PQenterPipelineMode(handle_.get())) lost();
  std::vector<bool> preparing;
  for (std::size_t i = 0; i < questions.size(); ++i) preparing.push_back(send(questions[i], bounds[i]));
  if (!PQpipelineSync(handle_.get())) lost();
  flush();

  std::vector<Answer> answers;
  Answer failure;  // the first; behind it the engine does nothing
  const auto takeInto = [&](std::vector<Answer>* kept) {
    Answer answer = take();
    const ExecStatusType status = PQresultStatus(answer.result());
    if (status == PGRES_FATAL_ERROR)
      failure = std::move(answer);
    else if (kept)
      kept->push_back(std::move(answer));
  };
  for (const bool prepares : preparing) {
    if (prepares) takeInto(nullptr);
    takeInto(&answers);
  }
  const Answer end(result());
  if (!end.result() || PQresultStatus(end.result()) != PGRES_PIPELINE_SYNC) lost();
  PQexitPipelineMode(handle_.get());
  heard();
  if (!failure.result()) return answers;
  for (std::size_t i = 0; i < questions.size(); ++i)
    if (preparing[i]) known_.erase(questions[i].text);  // prepared or not: under another name the next time
  const std::string state = stateOf(failure.result());
  if (state.starts_with("42") || state == "0A000") server_->definitionsDoubtful = true;
  fail(address(), failure.result());
}

}  // namespace tavoline::postgres
