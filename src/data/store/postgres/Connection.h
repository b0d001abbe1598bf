#pragma once

#include <libpq-fe.h>

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "data/store/postgres/Address.h"
#include "data/store/postgres/Answer.h"
#include "data/store/postgres/Messages.h"
#include "data/store/postgres/Reach.h"

namespace tavoline::postgres {

class Bound;

/// A server as all connections of a store know it.
struct Server {
  Address address;
  /// A statement met other tables than the catalog tells: it has to be read again.
  bool definitionsDoubtful = false;
  /// False once a connection could not be made, or the server fell silent, until one is made.
  bool reachable = true;
  /// How often the server fell silent, or answers went astray: connections from before are of no use.
  int silences = 0;
  int losses = 0;       ///< How many connections were found gone.
  bool full = false;    ///< It refused the last connection for want of room.
  Words lastHost = {};  ///< Of several, that which answered; asked first.

  /// What was just waited for in vain is not waited for again by the next step of the same gesture.
  std::optional<StoreError> refusal = {};
  std::chrono::steady_clock::time_point refusedUntil = {};
};

/// A statement with its values in place of $1, $2...
struct Question {
  std::string text;
  std::vector<Value> values = {};
};

/// One connection to the server, with its prepared statements. Where an answer does not come, the server is
/// asked over another connection whether it is still at work, and waited for only then, two minutes at most;
/// for another session's lock some seconds. One thread. Every failure is a StoreError with a sentence.
class Connection {
 public:
  /// Throws StoreError if the server cannot be reached, or refuses.
  explicit Connection(std::shared_ptr<Server> server);
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  /// Asks in one round trip. Throws StoreError for the first that fails, behind which none is done;
  /// LostConnection if the answer does not come.
  std::vector<Answer> ask(const std::vector<Question>& questions);
  Answer ask(const Question& question) { return std::move(ask(std::vector{question}).front()); }
  /// Several statements without values, prepared for this time only.
  void execute(const std::string& statements);
  /// Adds rows, in the engine's own text form, to a table with its columns in parentheses.
  void copyInto(const std::string& table, const std::string& rows);
  /// Sends a statement whose answer nobody needs. Never waits, never throws.
  void tell(const std::string& text) noexcept;

  /// How often this process has asked and waited for an answer, on all its connections.
  static std::uint64_t roundTrips();

  /// Waits for as long as the server is at work, from now on.
  void waitForLongWork() { limit_ = std::chrono::hours(24); }

  /// Whether the server is there, as far as is known: no other connection was found gone since it answered
  /// last. Asks, unless that was just now. Throws StoreError if the question fails otherwise.
  bool answers();
  bool alive() noexcept;  ///< Whether nothing says that the connection is gone; asks nobody.
  bool failed() const;    ///< Lost, or in a transaction that a failure has ended.
  int version() const { return PQserverVersion(handle_.get()); }
  std::string parameter(const char* name) const;
  PGconn* handle() const { return handle_.get(); }
  const Address& address() const { return server_->address; }
  Server& server() const { return *server_; }
  [[noreturn]] void lost();

 private:
  struct Known {
    int uses = 0;
    std::string name;  ///< Empty until it is prepared.
  };

  void connect();
  void await(short events);
  [[noreturn]] void fallSilent();
  void flush();
  bool send(const Question& question, const Bound& bound);
  Answer take();
  PGresult* result();  // waits; null at the end of an answer
  void finish();
  void heard();
  void drain();
  static void notice(void* self, const PGresult* result);

  std::shared_ptr<Server> server_;
  Handle handle_;
  std::chrono::milliseconds patience_{};  // with a silent server, before it is asked after
  std::chrono::seconds limit_ = std::chrono::minutes(2);
  int silences_ = 0;  // of the server when this one was made
  int losses_ = 0;    // of the server when this one was heard last
  std::chrono::nanoseconds heard_{};
  std::unordered_map<std::string, Known> known_;
  int prepared_ = 0;
  bool told_ = false;   // an answer is to be passed over
  bool ended_ = false;  // the server has said goodbye
};

}  // namespace tavoline::postgres
