#include "data/store/sqlite/LogFile.h"

#include <bit>
#include <cstring>

namespace tavoline::sqlite {

namespace {

constexpr std::size_t headSize = 32, frameHeadSize = 24;
constexpr std::uint32_t magic = 0x377f0682;  // its lowest bit says which end of a word is summed first

std::uint32_t bigEnd(const char* at) {
  std::uint32_t value = 0;
  for (int i = 0; i < 4; ++i) value = value << 8 | static_cast<unsigned char>(at[i]);
  return value;
}

}  // namespace

LogFile::LogFile(const std::string& path) : file_(path, std::ios::binary) {
  char head[headSize];
  if (!file_.read(head, headSize) || (bigEnd(head) & ~1U) != magic) return;
  bigEndSums_ = (bigEnd(head) & 1U) != 0;
  pageSize_ = bigEnd(head + 8);
  if (pageSize_ < 512 || pageSize_ > 65536 || (pageSize_ & (pageSize_ - 1)) != 0) return;
  salts_ = {bigEnd(head + 16), bigEnd(head + 20)};
  sum(head, 24);
  well_ = sums_[0] == bigEnd(head + 24) && sums_[1] == bigEnd(head + 28);
}

bool LogFile::next() {
  if (!well_) return false;
  well_ = false;
  char head[frameHeadSize];
  bytes_.resize(pageSize_);
  if (!file_.read(head, frameHeadSize) || !file_.read(bytes_.data(), pageSize_)) return false;
  // Behind the end stand the frames of the log's earlier life.
  if (bigEnd(head + 8) != salts_[0] || bigEnd(head + 12) != salts_[1]) return false;
  sum(head, 8);
  sum(bytes_.data(), bytes_.size());
  if (sums_[0] != bigEnd(head + 16) || sums_[1] != bigEnd(head + 20)) return false;
  page_ = bigEnd(head);
  pagesAfter_ = bigEnd(head + 4);
  return well_ = page_ != 0;
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
