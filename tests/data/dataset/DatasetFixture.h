#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "data/DMU.h"
#include "data/dataset/Dataset.h"
#include "support/StoreFile.h"

namespace tavoline {

/// A store of the seventeen tables in a folder of its own, and a second door to it that stands for another
/// workstation.
class DatasetTest : public testing::Test {
 protected:
  void SetUp() override {
    file.emplace();
    here = openStore();
    there = openStore();
  }
  void TearDown() override {
    here.reset();
    there.reset();
    file.reset();
  }

  std::shared_ptr<Store> openStore() const { return file->open(); }

  void addPlace(Store& store, int number, const std::string& name) {
    store.insert("Endroit", {{"ID_endroit", Value(number)}, {"Endoit", Value(name)}});
  }

  /// What a walk from First to the end shows of one field, with blanks between.
  static std::string walk(Dataset& rows, const char* field) {
    std::string seen;
    for (rows.First(); !rows.Eof(); rows.Next()) seen += (seen.empty() ? "" : " ") + rows[field].text();
    return seen;
  }

  std::optional<test::StoreFile> file;
  std::shared_ptr<Store> here, there;
};

/// A dataset already connected.
struct Connected : Dataset {
  Connected(const std::shared_ptr<Store>& store, const char* statement,
            std::vector<std::string> parameters = {})
      : Dataset("essai", statement, std::move(parameters)) {
    Connect(store);
  }
};

}  // namespace tavoline
