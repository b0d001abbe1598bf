#include "data/store/postgres/Answer.h"

#include <bit>
#include <cstdlib>

namespace tavoline::postgres {

namespace {

// The engine's numbers for its types, which never change.
enum TypeNumber : Oid {
  Bool = 16,
  Bytea = 17,
  Int8 = 20,
  Int2 = 21,
  Int4 = 23,
  Float4 = 700,
  Float8 = 701,
  Timestamp = 1114
};

std::uint64_t bigEndian(const char* bytes, std::size_t size) {
  std::uint64_t bits = 0;
  for (std::size_t i = 0; i < size; ++i) bits = bits << 8 | static_cast<unsigned char>(bytes[i]);
  return bits;
}

// The engine counts microseconds since the year 2000.
DateTime dateTimeOf(std::int64_t microseconds) {
  constexpr std::int64_t zeroDayTo2000 = 36526 * kMillisecondsPerDay;
  const std::int64_t down = microseconds % 1000 < 0 ? 1 : 0;
  return DateTime::fromMillis(microseconds / 1000 - down + zeroDayTo2000);
}

}  // namespace

Value Answer::value(int row, int column, FieldType type) const {
  if (isNull(row, column)) return {};
  const char* const from = bytes(row, column);
  const std::size_t length = size(row, column);
  const auto number = [type](std::int64_t whole) {
    return type == FieldType::Float ? Value(static_cast<double>(whole)) : Value(whole);
  };
  switch (PQftype(result_.get(), column)) {
    case Int8:
      return number(static_cast<std::int64_t>(bigEndian(from, 8)));
    case Int4:
      return number(static_cast<std::int32_t>(bigEndian(from, 4)));
    case Int2:
      return number(static_cast<std::int16_t>(bigEndian(from, 2)));
    case Bool:
      return number(*from != 0 ? 1 : 0);
    case Float8:
      return std::bit_cast<double>(bigEndian(from, 8));
    case Float4:
      return static_cast<double>(std::bit_cast<float>(static_cast<std::uint32_t>(bigEndian(from, 4))));
    case Timestamp:
      return dateTimeOf(static_cast<std::int64_t>(bigEndian(from, 8)));
    case Bytea: {
      const auto* const data = reinterpret_cast<const std::uint8_t*>(from);
      return SharedBytes(std::make_shared<const Bytes>(data, data + length));
    }
    default:
      return std::string(from, length);
  }
}

std::int64_t Answer::written() const {
  return std::atoll(PQcmdTuples(result_.get()));
}

}  // namespace tavoline::postgres
