#pragma once

#include <libpq-fe.h>

#include <chrono>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "data/store/postgres/Address.h"

namespace tavoline::postgres {

struct Finish {
  void operator()(PGconn* connection) const { PQfinish(connection); }
};
using Handle = std::unique_ptr<PGconn, Finish>;

/// Words of an address with their values.
using Words = std::vector<std::pair<std::string, std::string>>;

/// Tries to connect; the handle says whether it could. `over` stands over what the address says. Waits for
/// `connect_timeout` seconds at most for each host of the address, five where it says nothing.
Handle connectTo(const Address& address, const Words& over = {});
/// Tries once more, where a server answered and refused: connected, or the engine's code for the refusal,
/// empty where none came.
std::pair<Handle, std::string> askForCode(const Address& address);

Words hostOf(PGconn* session);                          ///< The one host of the address that it reached.
std::chrono::milliseconds patienceOf(PGconn* session);  ///< Its `connect_timeout`.

/// What a server says of a session whose answer does not come.
enum class Session {
  Works,   ///< It is at work, or the server does not tell.
  Rests,   ///< It waits for a question, or has gone.
  Unknown  ///< The server says nothing at all.
};
/// Asks the session's server over a connection of its own. Takes twice the session's patience at most.
Session askAfter(PGconn* session, const Address& address);

}  // namespace tavoline::postgres
