#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "data/schema/Identity.h"
#include "data/value/DateTime.h"
#include "tools/store/Filler.h"

namespace tavoline::tool {

/// Fills the seventeen tables of a store in the making. The keys are checked once it returns.
using Filling = std::function<void(Filler&)>;

/// Makes the store `path`: the seventeen tables, the record of version and password, and the rows that `fill`
/// puts in. The file appears whole, on the disk, or not at all. Throws StoreError, also if anything stands
/// under that name, which then stays as it was.
void createStore(const std::string& path, std::string_view password = schema::kStorePassword,
                 const Filling& fill = {});

/// Builds a file or a folder under a passing name beside `path` by `build`, forces it to the disk (of a
/// folder only its list of files) and gives it its name at the end. Never replaces anything, and leaves
/// nothing behind when `build` throws.
void publishFile(const std::string& path, const std::function<void(const std::string& temporary)>& build);

/// Waits until a file, or the list of files of a folder, is on the disk. Throws StoreError.
void forceToDisk(const std::string& path);

/// Throws StoreError if anything stands under the name.
void requireFree(const std::string& path);

/// A name beside `path`: BDD.mdb makes BDD.MARK-2026-11-22-203000ENDING.
std::string besideAt(DateTime moment, const std::string& path, std::string_view mark,
                     std::string_view ending);

}  // namespace tavoline::tool
