#include "data/store/Occupation.h"

namespace tavoline {

// The same in every build of the program: an older one may be at work beside a newer one.
std::int64_t occupationKey(std::string_view occupation) {
  std::uint64_t key = 14695981039346656037U;
  for (const char c : occupation) key = (key ^ static_cast<unsigned char>(c)) * 1099511628211U;
  return static_cast<std::int64_t>(key >> 1);
}

}  // namespace tavoline
