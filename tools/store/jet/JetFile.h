#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "data/value/Value.h"

struct S_MdbTableDef;

namespace tavoline::tool::jet {

inline constexpr std::size_t kPageSize = 4096;
using Page = std::array<std::uint8_t, kPageSize>;
using Part = std::span<const std::uint8_t>;  ///< Of a page.

std::uint16_t wordAt(Part bytes, std::size_t at);
std::uint32_t longAt(Part bytes, std::size_t at);

/// Where a row stands in the file: the page, and its number on it.
struct RowPlace {
  std::uint32_t page = 0;
  std::uint32_t row = 0;

  static RowPlace of(std::uint32_t pointer) { return {pointer >> 8, pointer & 0xFF}; }
};

/// Throws StoreError, with a sentence, unless `path` is a file that can be read, made of whole pages, whose
/// head says Jet 4. Reads its first bytes only.
void requireJet4(const std::string& path);

/// Throws StoreError: the file is damaged, at the `place` told.
[[noreturn]] void refuseDamaged(const std::string& path, const std::string& place);

/// A Jet 4 file, read only. The library's own walk over rows and long values trusts what stands in the file;
/// here only its pages, catalogue and definitions are used, and whoever reads does so in a process that may
/// die.
class JetFile {
 public:
  /// Throws StoreError like requireJet4, and for a catalogue that cannot be read.
  explicit JetFile(const std::string& path);
  ~JetFile();
  JetFile(const JetFile&) = delete;
  JetFile& operator=(const JetFile&) = delete;

  /// Finds a table by its name without regard to case; null if there is none. Valid as long as the file.
  /// Throws StoreError for a definition that cannot be read, and where two tables bear the name.
  S_MdbTableDef* table(std::string_view name);

  std::uint32_t pages() const { return pages_; }
  /// Copies a page. Throws StoreError for one outside the file.
  void read(std::uint32_t number, Page& page);
  /// Has the library stand on a page, whose rows it then takes apart.
  void standOn(std::uint32_t number);

  /// The row at `place`, on a page just read, and its flags. Throws StoreError unless it lies within the
  /// page.
  struct Row {
    Part bytes;
    std::size_t start = 0;
    bool deleted = false;  ///< Or the target of a pointer: nothing that the page itself counts.
    bool pointer = false;  ///< Moved: its four bytes tell where it stands.
  };
  Row row(const Page& page, RowPlace place) const;

  /// The bytes of a long value by the twelve bytes, or more, that stand for it in a row.
  Bytes longValue(Part field);

  [[noreturn]] void damaged(const std::string& place) const { refuseDamaged(path_, place); }

 private:
  struct Handle;
  Bytes chain(RowPlace first, std::size_t length);
  Row longPart(Page& page, RowPlace place);

  std::string path_;
  std::unique_ptr<Handle> handle_;
  std::uint32_t pages_ = 0;
};

}  // namespace tavoline::tool::jet
