#pragma once

#include <sys/types.h>

#include <filesystem>
#include <string>

#include "support/StoreFile.h"

namespace tavoline::test {

/// A server of this test's own, in a folder of its own, on a socket and on 127.0.0.1 only; it ends with the
/// test's process, however that ends. A user who is not root runs it.
class Cluster {
 public:
  /// With a primary: its standby, for which every acknowledged commit there waits.
  explicit Cluster(Cluster* primary = nullptr);
  ~Cluster();
  Cluster(const Cluster&) = delete;
  Cluster& operator=(const Cluster&) = delete;

  void start();
  void stop();                    ///< As an administrator does: sessions are ended.
  void crash();                   ///< As a power failure does.
  void kill();                    ///< Every process of it at once, by SIGKILL.
  void follow(Cluster& primary);  ///< Begins anew as its standby.
  void promote();                 ///< Goes on in the place of its primary, and waits for no standby.

  std::string address(const std::string& database) const;  ///< By the socket, as the superuser.
  /// The same of this one and of another, whichever takes writes.
  std::string address(const std::string& database, const Cluster& other) const;
  std::string socket() const;  ///< Its file.
  int port() const { return port_; }
  const std::filesystem::path& folder() const { return folder_.path(); }

 private:
  struct User {
    uid_t user;
    gid_t group;
  };
  static User serverUser();
  pid_t launch(const std::vector<std::string>& words) const;
  void run(const std::vector<std::string>& words) const;
  std::string ask(const std::string& sql) const;
  void makeEmpty(const User& user, const std::filesystem::path& data) const;
  void end(int signal);

  TemporaryFolder folder_;
  pid_t owner_ = 0;  // a forked process leaves the server alone
  pid_t server_ = 0;
  int port_ = 0;
};

}  // namespace tavoline::test
