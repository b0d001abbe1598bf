#pragma once

#include <string>
#include <string_view>

#include "data/value/Value.h"

namespace tavoline::tool {

/// What stands in a field of pictures.
struct Unwrapped {
  enum class Kind {
    Picture,  ///< A picture as it is.
    Freed,    ///< An object of another program around `picture`.
    Unknown   ///< Anything else, an object without a picture included.
  };
  Kind kind = Kind::Unknown;
  Bytes picture;
  std::string what;  ///< In French: the object around it, or what is known of it.
};

/// Looks for a picture in the bytes of a field: by itself, or embedded as an object (a package around a file,
/// or the file of a painting program).
Unwrapped pictureWithin(const Bytes& field);

/// The usual ending of the picture's file, by its first bytes: "png", "jpg"...; empty if it is none that is
/// known.
std::string_view pictureEnding(std::string_view bytes);

}  // namespace tavoline::tool
