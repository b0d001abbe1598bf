#pragma once

#include <libpq-fe.h>

#include <string>

#include "data/store/postgres/Address.h"
#include "data/value/Errors.h"

namespace tavoline::postgres {

/// The server did not answer, or ended the connection: what was asked may have been done or not.
class LostConnection : public StoreError {
 public:
  using StoreError::StoreError;
};

/// Throws the StoreError for a statement that failed: what happened, to what, what to do; the engine's own
/// words are its detail.
[[noreturn]] void fail(const Address& address, const PGresult* result);
/// ... for a server that could not be reached. `state` is the engine's code, as far as one is known.
[[noreturn]] void failToConnect(const Address& address, const std::string& state, const std::string& detail);
[[noreturn]] void failLost(const Address& address, const std::string& detail);
/// ... for a write whose answer never came.
[[noreturn]] void failUncertain(const Address& address, const std::string& table, const std::string& detail);

/// The engine's code of a failed statement: five characters.
std::string stateOf(const PGresult* result);

}  // namespace tavoline::postgres
