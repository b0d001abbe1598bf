#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tavoline {

/// The parts of a connection string of the form "Key=value;Key=value", keys without regard to case.
class ConnectionString {
 public:
  explicit ConnectionString(std::string_view text);
  std::string get(std::string_view key) const;  ///< Empty if absent.

 private:
  std::vector<std::pair<std::string, std::string>> parts_;
};

}  // namespace tavoline
