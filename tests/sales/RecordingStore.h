#pragma once

#include <string>
#include <vector>

#include "support/PassingStore.h"

namespace tavoline {

/// Keeps the writes that a store accepted, in order ("update commande J,M,A").
class RecordingStore : public test::PassingStore {
 public:
  using PassingStore::PassingStore;

  std::vector<std::string> writes;

 protected:
  void passWrite(const Request& write, const std::function<RowId()>& pass) override {
    pass();
    static const char* const kinds[] = {"insert ", "update ", "erase ", "execute "};
    std::string told = kinds[write.kind] + write.table;
    for (const auto& [name, value] : write.fields)
      told += (&value == &write.fields[0].second ? " " : ",") + name;
    writes.push_back(told);
  }
};

}  // namespace tavoline
