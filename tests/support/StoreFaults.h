#pragma once

#include <memory>

#include "data/store/Store.h"

namespace tavoline::test {

/// A store that refuses a write, or dies at one, where a test asks for it, and passes all else on.
class StoreFaults : public Store {
 public:
  enum class Fault {
    Refuse,     ///< The write throws StoreError and is not done.
    DieBefore,  ///< The process is killed before the write.
    DieAfter,   ///< The process is killed when the write is on the disk, before anybody knows.
  };

  explicit StoreFaults(std::shared_ptr<Store> inner) : inner_(std::move(inner)) {}

  /// At the n-th write from now on, counted from 1; once.
  void at(int write, Fault fault);
  int writes() const { return writes_; }  ///< Asked for so far, refused ones included.

  const Catalog& catalog() const override { return inner_->catalog(); }
  std::shared_ptr<const Snapshot> snapshot() override { return inner_->snapshot(); }
  RowId insert(const std::string& table, const FieldValues& fields) override;
  void update(const std::string& table, RowId row, const FieldValues& fields) override;
  void erase(const std::string& table, RowId row) override;
  void execute(const sql::Update& resolved, const sql::Parameters& parameters) override;
  void idle() override { inner_->idle(); }

 private:
  template <class Write>
  auto guarded(const Write& write);

  std::shared_ptr<Store> inner_;
  int writes_ = 0;
  int faultAt_ = 0;  // 0: none
  Fault fault_ = Fault::Refuse;
};

}  // namespace tavoline::test
