#pragma once

#include <string>

namespace tavoline::sql {

/// Throws the StatementError for a statement or filter that makes no sense. Whoever stands at the screen can
/// only have brought that about by what he typed, now or in a name: the sentence says so, and `detail` is
/// what is wrong with the words of the statement.
[[noreturn]] void refuse(const std::string& detail);

}  // namespace tavoline::sql
