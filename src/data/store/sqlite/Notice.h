#pragma once

#include <cstdint>
#include <string>

#include "data/store/sqlite/HolderRecord.h"

namespace tavoline::sqlite {

/// Tells all processes of this computer, of whichever user, what this one is at with a store. It is a socket
/// without a file, which nobody can reach and the system lists: it goes with the process, however that ends.
class Notice {
 public:
  explicit Notice(const FileIdentity& store);
  ~Notice();
  Notice(const Notice&) = delete;
  Notice& operator=(const Notice&) = delete;

  void say(std::int64_t key);  ///< Instead of what was said before.
  void silence();              ///< Takes it back.
  std::size_t othersSaying(std::int64_t key) const;

 private:
  std::string topic(std::int64_t key) const;

  FileIdentity store_;
  int socket_ = -1;
  std::string said_;
};

}  // namespace tavoline::sqlite
