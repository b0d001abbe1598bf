#pragma once

#include <cstdint>
#include <string>

namespace tavoline::tool {

/// What was put into a new store, for the message that tells of it.
struct DemoReport {
  std::int64_t orders = 0;
  std::int64_t lines = 0;
  bool pictures = false;
  std::string withoutPictures;  ///< Why there are none, in French; empty if they were not asked for.
};

/// Makes `path`, the store of a cafeteria with a few weeks behind it and two tables served just now. The same
/// on the same day. Throws StoreError.
DemoReport createDemo(const std::string& path);

struct Generation {
  std::int64_t orders = 0;
  std::int64_t invoices = 0;   ///< Of purchases, about five lines each.
  std::int64_t suppliers = 0;  ///< Beside those of the demo.
  std::uint64_t seed = 1;
  bool pictures = false;
};

/// Makes `path`, the same cafeteria with ten years of `orders` finished orders behind it. Throws StoreError.
DemoReport createGenerated(const std::string& path, const Generation& generation);

}  // namespace tavoline::tool
