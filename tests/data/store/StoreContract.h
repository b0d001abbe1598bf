#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <ostream>
#include <string>

#include "data/store/Store.h"
#include "data/value/Errors.h"
#include "support/StoreFile.h"

namespace tavoline::test {

/// One store of the seventeen empty tables, of some engine.
class StoreUnderTest {
 public:
  virtual ~StoreUnderTest() = default;
  virtual std::shared_ptr<Store> open() = 0;  ///< Each time another workstation.
  /// Keeps all others from writing to `table` until `release` is called. For another process than the test's.
  virtual void hold(const std::string& table) = 0;
  virtual void release() = 0;
};

/// An engine that promises the contract: to have it tested, add it to `storeKinds`.
struct StoreKind {
  std::string name;
  std::function<std::unique_ptr<StoreUnderTest>()> make;

  friend void PrintTo(const StoreKind& kind, std::ostream* out) { *out << kind.name; }
};

std::vector<StoreKind> storeKinds();

class StoreContract : public testing::TestWithParam<StoreKind> {
 protected:
  std::unique_ptr<StoreUnderTest> kind = GetParam().make();
};

inline RowId addPlace(Store& store, int number, const std::string& name) {
  return store.insert("Endroit", {{"ID_endroit", number}, {"Endoit", name}});
}

/// The names of all places, in order of insertion, with commas between.
inline std::string placesIn(const Store& store, const Snapshot& snapshot) {
  std::string names;
  for (const auto& row : read(store, snapshot, "select * from Endroit"))
    names += (names.empty() ? "" : ",") + row[1].text();
  return names;
}
inline std::string placesIn(Store& store) {
  return placesIn(store, *store.snapshot());
}

/// What a refused call says; empty, and a failure, if it is not refused.
inline std::string refusalOf(const std::function<void()>& call) {
  try {
    call();
  } catch (const StoreError& error) {
    return error.what();
  }
  ADD_FAILURE() << "was not refused";
  return {};
}

}  // namespace tavoline::test
