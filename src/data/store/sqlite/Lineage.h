#pragma once

#include "data/store/Location.h"
#include "data/store/sqlite/Connection.h"

/// What tells a store from its copies, and the log of a store from that of another.
namespace tavoline::sqlite {

/// Gives the store a number of its own, as a copy needs that may go another way than what it was made from.
/// Does nothing to a store that keeps no counts.
void giveIdentity(Connection& connection);
bool hasIdentity(Connection& connection);

/// Throws StoreError if what stands beside the file is the log of another one, which would be played into it
/// by whoever opens it: the file was replaced, or the log was left behind. Leaves both as they are. To be
/// asked before a connection is made. A log that says nothing of its file is taken for its own.
void requireOwnLog(const Location& file);

}  // namespace tavoline::sqlite
