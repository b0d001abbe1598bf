#include "tools/store/exchange/Cells.h"

#include <glib.h>

#include <bit>
#include <cstring>
#include <stdexcept>

namespace tavoline::tool {
namespace {

// The kind of a cell comes first.
constexpr char kNull = 'n', kInteger = 'i', kFloat = 'f', kText = 't', kDate = 'd', kBytes = 'b';

template <typename Number>
void put(std::string& bytes, Number number) {
  char raw[sizeof number];
  std::memcpy(raw, &number, sizeof number);
  bytes.append(raw, sizeof number);
}

std::string_view take(std::string_view& bytes, std::size_t count) {
  if (bytes.size() < count) throw std::runtime_error("a cell ends too soon");
  const std::string_view taken = bytes.substr(0, count);
  bytes.remove_prefix(count);
  return taken;
}

template <typename Number>
Number take(std::string_view& bytes) {
  Number number;
  std::memcpy(&number, take(bytes, sizeof number).data(), sizeof number);
  return number;
}

GChecksum* handle(void* checksum) {
  return static_cast<GChecksum*>(checksum);
}

}  // namespace

void putNumber(std::string& bytes, std::uint32_t number) {
  put(bytes, number);
}

std::uint32_t takeNumber(std::string_view& bytes) {
  return take<std::uint32_t>(bytes);
}

void putCell(std::string& bytes, const Value& value) {
  if (value.isNull()) {
    bytes += kNull;
  } else if (value.isInteger()) {
    bytes += kInteger;
    put(bytes, value.toInteger());
  } else if (value.isFloat()) {
    bytes += kFloat;
    put(bytes, value.toFloat());
  } else if (value.isDateTime()) {
    bytes += kDate;
    put(bytes, value.toDateTime().millis());
  } else if (value.isBytes()) {
    const SharedBytes held = value.toBytes();
    bytes += kBytes;
    putNumber(bytes, static_cast<std::uint32_t>(held->size()));
    bytes.append(held->begin(), held->end());
  } else {
    const std::string text = value.text();
    bytes += kText;
    putNumber(bytes, static_cast<std::uint32_t>(text.size()));
    bytes += text;
  }
}

Value takeCell(std::string_view& bytes) {
  switch (take(bytes, 1).front()) {
    case kNull:
      return {};
    case kInteger:
      return take<std::int64_t>(bytes);
    case kFloat:
      return take<double>(bytes);
    case kDate:
      return DateTime::fromMillis(take<std::int64_t>(bytes));
    case kBytes: {
      const std::string_view held = take(bytes, takeNumber(bytes));
      return SharedBytes(std::make_shared<const Bytes>(held.begin(), held.end()));
    }
    case kText:
      return take(bytes, takeNumber(bytes));
    default:
      throw std::runtime_error("a cell of no kind");
  }
}

RowDigest::RowDigest() : checksum_(g_checksum_new(G_CHECKSUM_SHA256)) {}

RowDigest::~RowDigest() {
  g_checksum_free(handle(checksum_));
}

void RowDigest::flush() {
  g_checksum_update(handle(checksum_), reinterpret_cast<const guchar*>(pending_.data()),
                    static_cast<gssize>(pending_.size()));
  pending_.clear();
}

void RowDigest::add(std::span<const Value> row) {
  constexpr std::size_t kEnough = 65536;
  for (const Value& value : row) {
    if (value.isFloat() && value.toFloat() == 0)
      putCell(pending_, 0.0);
    else
      putCell(pending_, value);
  }
  if (pending_.size() >= kEnough) flush();
}

std::string RowDigest::text() {
  flush();
  return g_checksum_get_string(handle(checksum_));
}

std::string sha256(const Bytes& bytes) {
  char* const text = g_compute_checksum_for_data(G_CHECKSUM_SHA256, bytes.data(), bytes.size());
  std::string digest = text;
  g_free(text);
  return digest;
}

}  // namespace tavoline::tool
