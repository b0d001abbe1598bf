#pragma once

#include <sys/types.h>

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "data/value/DateTime.h"

namespace tavoline::tool {

/// Who may open a file that the tool makes: its owner, and a group if one is told.
struct Access {
  mode_t mode = 0600;
  std::optional<gid_t> group;
  std::optional<uid_t> owner;  ///< Only the system's administrator can give a file away.

  /// The owner and `group`, by its name. Throws StoreError if the system does not know it.
  static Access ofGroup(const std::string& group);
  /// No more than `path` allows, and nothing to strangers; for the owner alone if there is no such file.
  static Access like(const std::string& path);
};

using Build = std::function<void(const std::string& temporary)>;

/// Throws StoreError if something stands under the name, or a log beside it, which would be played into
/// whatever comes there.
void requireFree(const std::string& path);

/// Builds a file under a passing name beside `path` by `build`, forces it to the disk and gives it its name
/// at the end. Never replaces a file, and leaves none behind when `build` throws. The passing name is given
/// to `build` as an absolute path. Throws StoreError.
void publishFile(const std::string& path, const Build& build, const Access& access = {});

/// The same for a folder, which `build` finds made and empty. Of its files only their list is forced to the
/// disk.
void publishFolder(const std::string& path, const Build& build);

/// The same as for a file in place of the store at `path`: once the new file is whole, what stood there is
/// moved aside with its log, under the name that is given back (empty if nothing stood there).
std::string replaceFile(const std::string& path, const Build& build, const Access& access);

/// Waits until a file, or the list of files of a folder, is on the disk. Throws StoreError.
void forceToDisk(const std::string& path);

/// A name beside `path`: BDD.mdb makes BDD.MARK-2026-11-22-203000ENDING.
std::string besideAt(DateTime moment, const std::string& path, std::string_view mark,
                     std::string_view ending);

}  // namespace tavoline::tool
