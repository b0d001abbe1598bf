#pragma once

#include "support/PassingStore.h"

namespace tavoline::test {

/// A store that refuses a write, or dies at one, where a test asks for it.
class StoreFaults : public PassingStore {
 public:
  enum class Fault {
    Refuse,     ///< The write throws StoreError and is not done.
    DieBefore,  ///< The process is killed before the write.
    DieAfter,   ///< The process is killed when the write is on the disk, before anybody knows.
  };

  using PassingStore::PassingStore;

  /// At the n-th write from now on, counted from 1; once.
  void at(int write, Fault fault) { writesLeft_ = write, fault_ = fault; }

 protected:
  void passWrite(const Request& write, const std::function<RowId()>& pass) override;

 private:
  int writesLeft_ = 0;  // 0: none
  Fault fault_ = Fault::Refuse;
};

}  // namespace tavoline::test
