#pragma once

#include <fstream>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tavoline::tool {

/// A field of a table file. A text stands in quotes, so that an empty one is not a missing value.
struct CsvField {
  std::string text;
  bool quoted = false;
};

/// The field as it stands in the file: in quotes if it is quoted, those within doubled (RFC 4180).
std::string csvField(const CsvField& field);

/// Reads the records of such a file, lines ended either way. Throws StoreError with the place of what is no
/// record, and for a file that cannot be read.
class CsvReader {
 public:
  explicit CsvReader(const std::string& path);
  /// False at the end. The fields are good until the next call.
  bool next();
  const std::vector<CsvField>& fields() const { return fields_; }

 private:
  int take();
  int peek() { return file_.sgetc(); }
  void readQuoted(std::string& text);
  [[noreturn]] void malformed() const;

  std::string path_;
  std::filebuf file_;
  std::string buffer_;
  std::vector<CsvField> fields_;
  std::int64_t record_ = 0;
};

/// Puts an apostrophe before whatever a spreadsheet could run as a formula: at the beginning of the text, and
/// behind what a spreadsheet of another country takes for the end of a cell. `unguarded` gives the text back,
/// whatever it is.
std::string guarded(std::string_view text);
std::string unguarded(std::string_view text);

}  // namespace tavoline::tool
