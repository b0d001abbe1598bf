#pragma once

#include <filesystem>
#include <functional>
#include <string>

#include "support/StoreFile.h"

namespace tavoline::test {

/// Where the workstations of a test make their folder, as long as this lives. The working directory comes
/// back.
class Home {
 public:
  Home();
  ~Home();
  Home(const Home&) = delete;
  Home& operator=(const Home&) = delete;
  /// The folder of the only workstation that made a store.
  std::filesystem::path store() const;

 private:
  std::string temporary_ = std::filesystem::temp_directory_path();
  std::filesystem::path before_ = std::filesystem::current_path();
  TemporaryFolder folder_;
};

/// A series of writes between any two of which a workstation can be killed, in the steps of a session.
struct Killing {
  std::string name;
  int writes;
  std::string before, run;
  std::string finish;    ///< Behind `run`, where it is not killed.
  std::string contents;  ///< An expression of SQL: all that is written to, as one text.
};

/// Plays it in a process that kills itself before its first write, and in others behind each of them. The
/// store that is left must be sound, open, and hold exactly the writes until then; `left` is told how many
/// that are, with the store's folder as working directory. To be called by a process without an application.
void killBetweenWrites(const Killing& killing, const std::function<void(int writes)>& left = {});

/// Runs `body` with an application of its own: one does not survive a fork. Its failures of expectations
/// throw.
void withApplication(const std::function<void()>& body);

}  // namespace tavoline::test
