#include "support/StoreFaults.h"

#include <signal.h>
#include <unistd.h>

#include "data/value/Errors.h"

namespace tavoline::test {

namespace {

void die() {
  ::kill(::getpid(), SIGKILL);
}

// Dies when the write has returned, whatever it returns.
struct DeathAfter {
  bool armed;
  ~DeathAfter() {
    if (armed) die();
  }
};

}  // namespace

void StoreFaults::at(int write, Fault fault) {
  faultAt_ = writes_ + write;
  fault_ = fault;
}

template <class Write>
auto StoreFaults::guarded(const Write& write) {
  const bool now = ++writes_ == faultAt_;
  if (now && fault_ == Fault::Refuse) throw StoreError("Le disque est plein : rien n'a été enregistré.");
  if (now && fault_ == Fault::DieBefore) die();
  const DeathAfter death{now && fault_ == Fault::DieAfter};
  return write();
}

RowId StoreFaults::insert(const std::string& table, const FieldValues& fields) {
  return guarded([&] { return inner_->insert(table, fields); });
}

void StoreFaults::update(const std::string& table, RowId row, const FieldValues& fields) {
  guarded([&] { inner_->update(table, row, fields); });
}

void StoreFaults::erase(const std::string& table, RowId row) {
  guarded([&] { inner_->erase(table, row); });
}

void StoreFaults::execute(const sql::Update& resolved, const sql::Parameters& parameters) {
  guarded([&] { inner_->execute(resolved, parameters); });
}

}  // namespace tavoline::test
