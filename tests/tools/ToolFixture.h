#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "data/value/Clock.h"
#include "support/StoreFile.h"
#include "tools/store/Commands.h"

namespace tavoline::tool {

/// A folder of its own, and the tool played as from its command line. "Now" is a Sunday evening.
class ToolTest : public testing::Test {
 public:
  ToolTest() {
    Clock::set([] { return DateTime::of(2026, 11, 22, 20, 30); });
  }
  ~ToolTest() override { Clock::set({}); }

 protected:
  std::string file(const std::string& name = "BDD.mdb") const { return (folder.path() / name).string(); }

  int tool(const std::vector<std::string>& words, const AskSecret& asked = {}) {
    std::ostringstream out, err;
    const int status = runTool(words, out, err, asked);
    said = out.str() + err.str();
    return status;
  }

  /// Runs `sql` on `path` as any SQLite tool would.
  static void plant(const std::string& path, const std::string& sql) { test::sideDoor(path).execute(sql); }

  /// Looks at `path` without changing anything.
  static sqlite::Connection observed(const std::string& path) {
    return {path, path, sqlite::Connection::Role::Observer};
  }

  static std::string ask(const std::string& path, const std::string& sql) { return observed(path).text(sql); }

  const test::TemporaryFolder folder;
  std::string said;
};

}  // namespace tavoline::tool
