#include "data/store/sqlite/LogFile.h"

#include <bit>
#include <cstring>
#include <utility>

namespace tavoline::sqlite {

namespace {

constexpr std::size_t headSize = 32, frameHeadSize = 24, headAndKind = frameHeadSize + 1;
constexpr std::uint32_t magic = 0x377f0682;  // its lowest bit says which end of a word is summed first

std::uint32_t bigEnd(const char* at) {
  std::uint32_t value = 0;
  for (int i = 0; i < 4; ++i) value = value << 8 | static_cast<unsigned char>(at[i]);
  return value;
}

}  // namespace

LogFile::LogFile(const std::string& path) {
  file_.rdbuf()->pubsetbuf(nullptr, 0);  // of most frames little is read
  file_.open(path, std::ios::binary);
  char head[headSize];
  if (!read(head, headSize, 0) || (bigEnd(head) & ~1U) != magic) return;
  bigEndSums_ = (bigEnd(head) & 1U) != 0;
  pageSize_ = bigEnd(head + 8);
  if (pageSize_ < 512 || pageSize_ > 65536 || (pageSize_ & (pageSize_ - 1)) != 0) return;
  salts_ = {bigEnd(head + 16), bigEnd(head + 20)};
  sum(head, 24);
  well_ = sums_[0] == bigEnd(head + 24) && sums_[1] == bigEnd(head + 28);
}

std::size_t LogFile::frames() {
  std::size_t some = 0, tooMany = 1;
  while (frame(tooMany - 1)) some = std::exchange(tooMany, tooMany * 2);
  while (some + 1 < tooMany) {
    const std::size_t middle = some + (tooMany - some) / 2;
    (frame(middle - 1) ? some : tooMany) = middle;
  }
  return some;
}

std::optional<LogFile::Frame> LogFile::frame(std::size_t number) {
  char head[headAndKind];
  if (!readHead(number, head)) return std::nullopt;
  return Frame{bigEnd(head), bigEnd(head + 4), head[frameHeadSize]};
}

std::optional<LogFile::Frame> LogFile::next() {
  char head[headAndKind];
  if (!readHead(next_, head)) return std::nullopt;
  const std::string page = bytes(next_);
  sum(head, 8);
  sum(page.data(), page.size());
  well_ = !page.empty() && sums_[0] == bigEnd(head + 16) && sums_[1] == bigEnd(head + 20);
  if (!well_) return std::nullopt;
  ++next_;
  return Frame{bigEnd(head), bigEnd(head + 4), head[frameHeadSize]};
}

std::string LogFile::bytes(std::size_t number) {
  std::string page(pageSize_, '\0');
  if (!read(page.data(), page.size(), placeOf(number) + frameHeadSize)) page.clear();
  return page;
}

std::uint64_t LogFile::placeOf(std::size_t number) const {
  return headSize + std::uint64_t{number} * (frameHeadSize + pageSize_);
}

// Behind the end stand the frames of the log's earlier life.
bool LogFile::readHead(std::size_t number, char* head) {
  return well_ && read(head, headAndKind, placeOf(number)) && bigEnd(head) != 0 &&
         bigEnd(head + 8) == salts_[0] && bigEnd(head + 12) == salts_[1];
}

bool LogFile::read(char* bytes, std::size_t count, std::uint64_t place) {
  file_.clear();
  return file_.seekg(static_cast<std::streamoff>(place)) &&
         file_.read(bytes, static_cast<std::streamsize>(count));
}

// A log of some megabytes stands between a kill and the next start: four bytes at once.
void LogFile::sum(const char* bytes, std::size_t count) {
  const bool swapped = bigEndSums_ == (std::endian::native == std::endian::little);
  const auto word = [swapped](const char* at) {
    std::uint32_t value = 0;
    std::memcpy(&value, at, sizeof value);
    return swapped ? __builtin_bswap32(value) : value;
  };
  for (std::size_t i = 0; i < count; i += 8) {
    sums_[0] += word(bytes + i) + sums_[1];
    sums_[1] += word(bytes + i + 4) + sums_[0];
  }
}

}  // namespace tavoline::sqlite
