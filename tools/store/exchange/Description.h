#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "data/value/DateTime.h"

namespace tavoline::tool {

/// What stands in a folder of tables: the file `tavoline.json` within it.
struct Description {
  struct Column {
    std::string name, type;  ///< text, integer, float, datetime or blob.
  };
  struct Table {
    std::string name, file;
    std::int64_t rows = 0;
    std::string digest;  ///< SHA-256 of its values, see RowDigest.
    std::vector<Column> columns;
  };

  DateTime written;
  std::int64_t pictures = 0;
  std::vector<Table> tables;

  std::string json() const;
  /// Throws StoreError for a folder without a description, or with one that cannot be read or is of a later
  /// version.
  static Description of(const std::string& folder);

  const Table* find(std::string_view table) const;  ///< Null if it is not there.
};

inline constexpr std::string_view kDescriptionFile = "tavoline.json";
inline constexpr std::string_view kPictureFolder = "images";

}  // namespace tavoline::tool
