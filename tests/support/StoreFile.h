#pragma once

#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "data/store/Store.h"
#include "data/store/sqlite/Connection.h"

namespace tavoline::test {

/// The bytes of a file; none if it cannot be read.
std::string bytesOf(const std::filesystem::path& file);

/// A store as any SQLite tool opens it; makes an empty file where there is none.
sqlite::Connection sideDoor(const std::string& path);

/// A folder that goes when the test ends.
class TemporaryFolder {
 public:
  TemporaryFolder();
  ~TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  const std::filesystem::path& path() const { return path_; }
  /// Names and bytes of all that stands in it: equal before and after where nothing may be touched.
  std::map<std::string, std::string> contents() const;

 private:
  std::filesystem::path path_;
};

/// A store of the seventeen empty tables, or what leads to one, in a folder of its own.
class StoreFile {
 public:
  StoreFile();
  /// Of a store on a server, made in the database of this address; its workstations have their own role.
  explicit StoreFile(const std::string& address);

  std::shared_ptr<Store> open() const;  ///< Each time another workstation.
  /// Runs SQL on the side, as any SQLite tool would, and gives the first column of the first row as text.
  std::string run(const std::string& sql) const;

  const TemporaryFolder& folder() const { return folder_; }
  std::filesystem::path path() const { return folder_.path() / "BDD.mdb"; }
  std::string connectionString() const;

 private:
  TemporaryFolder folder_;
};

using Table = std::vector<std::vector<Value>>;

/// The rows of a statement of the dialect.
std::unique_ptr<Rows> stream(const Store& store, const Snapshot& snapshot, std::string_view statement,
                             const sql::Parameters& parameters = {});
Table read(const Store& store, const Snapshot& snapshot, std::string_view statement,
           const sql::Parameters& parameters = {});
/// The rows of the newest version.
Table read(Store& store, std::string_view statement);
/// Runs an update of the dialect.
void execute(Store& store, std::string_view statement, const sql::Parameters& parameters = {});

}  // namespace tavoline::test
