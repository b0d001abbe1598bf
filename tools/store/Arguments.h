#pragma once

#include <cstdint>
#include <map>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace tavoline::tool {

/// The tool was called wrongly; what() says how, in French.
class UsageError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// The words after a command: files by their place, options as `--name value` or `--name=value`, flags as
/// `--name`.
class Arguments {
 public:
  /// Throws UsageError for an option that is not among `options` and `flags`, for one without its value, and
  /// unless there are just `files` files.
  Arguments(const std::vector<std::string>& words, std::size_t files,
            const std::vector<std::string_view>& options, const std::vector<std::string_view>& flags);

  const std::string& file(std::size_t place) const { return files_.at(place); }
  bool has(std::string_view name) const { return values_.contains(name); }
  std::string text(std::string_view name, std::string_view otherwise) const;
  /// Throws UsageError unless it is a whole number from 0 to `highest`.
  std::int64_t number(std::string_view name, std::int64_t otherwise, std::int64_t highest) const;

 private:
  std::vector<std::string> files_;
  std::map<std::string, std::string, std::less<>> values_;
};

}  // namespace tavoline::tool
