#include "cash/Amount.h"

#include "data/value/Regional.h"

namespace tavoline {

std::string difference(std::string_view from, std::string_view what) {
  return formatFloat(readExtended(from) - readExtended(what));
}

}  // namespace tavoline
