#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "data/value/Value.h"

namespace tavoline::tool {

/// Appends a value as bytes that give the same value again, floats bit for bit.
void putCell(std::string& bytes, const Value& value);
/// Takes one off the front. Throws std::runtime_error where the bytes end too soon.
Value takeCell(std::string_view& bytes);

void putNumber(std::string& bytes, std::uint32_t number);
std::uint32_t takeNumber(std::string_view& bytes);

/// SHA-256 of rows, in 64 hexadecimal digits: the same for the same values in the same order, whatever the
/// engine. The sign of zero does not count.
class RowDigest {
 public:
  RowDigest();
  ~RowDigest();
  RowDigest(const RowDigest&) = delete;
  RowDigest& operator=(const RowDigest&) = delete;

  void add(std::span<const Value> row);
  std::string text();  ///< Of all rows so far; nothing can be added behind it.

 private:
  void flush();

  void* checksum_;
  std::string pending_;
};

std::string sha256(const Bytes& bytes);  ///< In 64 hexadecimal digits.

}  // namespace tavoline::tool
