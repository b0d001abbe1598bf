#pragma once

#include <array>
#include <cstdint>
#include <fstream>
#include <string>

namespace tavoline::sqlite {

/// The frames of a write-ahead log that would be played, read without the engine, which cannot look at a log
/// without taking it for the file's own.
class LogFile {
 public:
  explicit LogFile(const std::string& path);

  /// Steps to the next frame that belongs to the log and came whole to the disk; false behind the last.
  bool next();
  std::uint32_t page() const { return page_; }  ///< The frame's page in the file, from 1.
  /// Pages of the file once the transaction is played that this frame ends; 0 for any other frame.
  std::uint32_t pagesAfter() const { return pagesAfter_; }
  const std::string& bytes() const { return bytes_; }
  std::uint32_t pageSize() const { return pageSize_; }

 private:
  void sum(const char* bytes, std::size_t count);

  std::ifstream file_;
  bool well_ = false;
  bool bigEndSums_ = false;
  std::uint32_t pageSize_ = 0, page_ = 0, pagesAfter_ = 0;
  std::array<std::uint32_t, 2> salts_{}, sums_{};
  std::string bytes_;
};

}  // namespace tavoline::sqlite
