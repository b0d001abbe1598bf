#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "data/schema/Identity.h"
#include "tools/store/Filler.h"
#include "tools/store/Publishing.h"

namespace tavoline::tool {

/// Fills the seventeen tables of a store in the making. The keys are checked once it returns.
using Filling = std::function<void(Filler&)>;

/// Makes the store `path`: the seventeen tables, the record of version and password, and the rows that `fill`
/// puts in. The file appears whole, on the disk, or not at all. Throws StoreError, also if anything stands
/// under that name, which then stays as it was.
void createStore(const std::string& path, std::string_view password = schema::kStorePassword,
                 const Filling& fill = {}, const Access& access = {});

}  // namespace tavoline::tool
