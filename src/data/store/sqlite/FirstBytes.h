#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace tavoline::sqlite {

/// The first bytes of a file, at most `count`; nothing if it cannot be read. Goes through the engine's own
/// files: to open and close a store in any other way would take away the locks that this process holds on it.
std::optional<std::string> firstBytes(const std::string& path, std::size_t count);
/// The same for those that begin `at` bytes behind the first.
std::optional<std::string> bytesAt(const std::string& path, std::uint64_t at, std::size_t count);

}  // namespace tavoline::sqlite
