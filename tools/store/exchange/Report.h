#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "data/value/DateTime.h"

namespace tavoline::tool {

/// Things to be told one by one, of which only the first thousands are kept.
class Listed {
 public:
  void add(std::string one);
  std::int64_t count() const { return count_; }
  const std::vector<std::string>& kept() const { return kept_; }

 private:
  std::int64_t count_ = 0;
  std::vector<std::string> kept_;
};

/// What an import read, and what became of it.
struct ImportReport {
  struct Table {
    std::string_view name;
    std::int64_t read = 0, written = 0;
    std::string digest;  ///< Of the rows written (SHA-256).
  };
  struct Sum {
    std::string_view table, column;
    double read = 0, written = 0;  ///< DA
  };

  std::string source, target;
  std::string file;  ///< Where it stands as a file; empty where it does not.
  DateTime begun;
  bool trial = false;  ///< Nothing was to be written.
  std::vector<Table> tables;
  std::vector<Sum> sums;
  std::vector<std::string> remarks;
  Listed refused;         ///< Rows that did not arrive, each with its key and the reason.
  Listed freed, wrapped;  ///< Pictures taken out of an object, and those left as they were.

  bool withoutRemarks() const;
};

/// In French, with all that is to be told; with at most `shown` of each kind where that is not zero.
std::string told(const ImportReport& report, std::size_t shown);

}  // namespace tavoline::tool
