#pragma once

#include <string_view>
#include <vector>

namespace tavoline::test {

struct NamedStatement {
  std::string_view name;
  std::string_view text;
};

/// The statement of every dataset, as the data module has it.
const std::vector<NamedStatement>& statements();

/// The text of one of them. Throws std::out_of_range.
std::string_view statementOf(std::string_view dataset);

}  // namespace tavoline::test
