#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <fstream>
#include <optional>
#include <string>

namespace tavoline::sqlite {

/// The frames of a write-ahead log, read without the engine, which cannot look at a log without taking it for
/// the file's own.
class LogFile {
 public:
  struct Frame {
    std::uint32_t page = 0;  ///< In the file, from 1.
    std::uint32_t pagesAfter =
        0;          ///< Of the file, once the transaction is played that this frame ends; or 0.
    char kind = 0;  ///< The first byte of its page.
  };

  explicit LogFile(const std::string& path);

  std::uint32_t pageSize() const { return pageSize_; }
  /// How many frames are of this log's present life: older ones stand behind them. The last ones need not
  /// have come whole to the disk.
  std::size_t frames();
  /// The frame at `number`, from 0; nothing behind those that frames() counts.
  std::optional<Frame> frame(std::size_t number);
  std::string bytes(std::size_t number);  ///< The page of a frame; empty where it cannot be read.

  /// Steps through the frames that would be played, in their order; nothing behind the last.
  std::optional<Frame> next();

 private:
  bool read(char* bytes, std::size_t count, std::uint64_t place);
  bool readHead(std::size_t number, char* head);
  std::uint64_t placeOf(std::size_t number) const;
  void sum(const char* bytes, std::size_t count);

  std::ifstream file_;
  bool well_ = false;
  bool bigEndSums_ = false;
  std::uint32_t pageSize_ = 0;
  std::size_t next_ = 0;
  std::array<std::uint32_t, 2> salts_{}, sums_{};
};

}  // namespace tavoline::sqlite
