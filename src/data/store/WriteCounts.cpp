#include "data/store/WriteCounts.h"

#include "data/value/Text.h"

namespace tavoline {

std::int64_t countOf(const WriteCounts& counts, const std::string& table) {
  const auto count = counts.find(foldName(table));
  return count == counts.end() ? 0 : count->second;
}

}  // namespace tavoline
