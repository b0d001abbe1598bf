#pragma once

#include <string>
#include <vector>

#include "data/store/postgres/Address.h"

namespace tavoline::tool {

/// Which programs hold versions of the store on a server, how many and since when: a line each, as far as
/// the server tells them to this user. Throws StoreError.
std::vector<std::string> versionsOnServer(const postgres::Address& address);

}  // namespace tavoline::tool
