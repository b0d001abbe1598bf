#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace tavoline::tool {

/// Draws the pictures of the demo.
class Pictures {
 public:
  virtual ~Pictures() = default;
  /// A PNG of 128 x 96: the emoji `subject` on a card in one of the warm tints (any number), and, unless it
  /// is empty, the emoji `badge` small in its lower right corner.
  virtual std::vector<std::uint8_t> card(std::string_view subject, std::string_view badge,
                                         int tint) const = 0;
};

/// Null where nothing can be drawn; `reason` then says why, in French.
std::unique_ptr<Pictures> makePictures(std::string& reason);

}  // namespace tavoline::tool
