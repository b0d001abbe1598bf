#include "tools/store/exchange/Pictures.h"

#include <cstdint>
#include <optional>
#include <stdexcept>

namespace tavoline::tool {
namespace {

using namespace std::string_view_literals;

constexpr std::uint16_t kObjectMark = 0x1C15;
constexpr std::uint32_t kEmbedded = 2, kWithinPackage = 3;
constexpr std::uint16_t kPackageMark = 2;

/// The object does not follow its form.
class Malformed : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Takes parts off the front, never beyond the end.
class Parts {
 public:
  explicit Parts(std::string_view bytes) : rest_(bytes) {}

  std::string_view bytes(std::size_t count) {
    if (count > rest_.size()) throw Malformed("too short");
    const std::string_view taken = rest_.substr(0, count);
    rest_.remove_prefix(count);
    return taken;
  }
  std::uint32_t number(std::size_t size) {
    std::uint32_t value = 0, shift = 0;
    for (const char c : bytes(size)) {
      value |= static_cast<std::uint32_t>(static_cast<unsigned char>(c)) << shift;
      shift += 8;
    }
    return value;
  }
  std::uint16_t word() { return static_cast<std::uint16_t>(number(2)); }
  std::uint32_t length() { return number(4); }
  /// Its length comes first.
  std::string_view block() { return bytes(length()); }
  /// Up to a byte of zero.
  std::string_view string() {
    const std::size_t end = rest_.find('\0');
    if (end == rest_.npos) throw Malformed("without an end");
    const std::string_view taken = bytes(end);
    bytes(1);
    return taken;
  }

 private:
  std::string_view rest_;
};

std::string_view withoutZero(std::string_view text) {
  return text.substr(0, text.find('\0'));
}

/// The file within a package: its name and the path it came from stand before it.
std::string_view fileOfPackage(std::string_view package) {
  Parts parts(package);
  if (parts.word() != kPackageMark) throw Malformed("not a package");
  parts.string();
  parts.string();
  parts.word();
  if (parts.word() != kWithinPackage) throw Malformed("only a link");
  parts.block();
  return parts.block();
}

/// An embedded object as a field of pictures holds it: a head with two names, then the object itself.
struct Object {
  std::string program;
  std::string_view data;
};

Object objectIn(std::string_view field) {
  Parts head(field);
  if (head.word() != kObjectMark) throw Malformed("not an object");
  const std::uint16_t size = head.word();
  Parts object(field);
  object.bytes(size);
  object.length();  // version
  if (object.length() != kEmbedded) throw Malformed("not embedded");
  Object found{std::string(withoutZero(object.block())), {}};
  object.block();  // topic
  object.block();  // item
  found.data = object.block();
  return found;
}

std::string_view asView(const Bytes& bytes) {
  return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

/// For the report: the letters that every terminal shows.
std::string plain(std::string_view name) {
  std::string letters;
  for (const char c : name.substr(0, 40)) letters += c >= ' ' && c < '\x7f' ? c : '?';
  return letters;
}

}  // namespace

std::string_view pictureEnding(std::string_view bytes) {
  constexpr std::pair<std::string_view, std::string_view> kBeginnings[] = {{"\x89PNG\r\n\x1a\n"sv, "png"},
                                                                           {"\xff\xd8\xff"sv, "jpg"},
                                                                           {"GIF87a"sv, "gif"},
                                                                           {"GIF89a"sv, "gif"},
                                                                           {"II*\0"sv, "tif"},
                                                                           {"MM\0*"sv, "tif"},
                                                                           {"\0\0\1\0"sv, "ico"}};
  for (const auto& [beginning, ending] : kBeginnings)
    if (bytes.starts_with(beginning)) return ending;
  if (bytes.starts_with("RIFF"sv) && bytes.size() > 12 && bytes.substr(8, 4) == "WEBP"sv) return "webp";
  // Two letters are little to go by: the size of the head has to be one that there is.
  if (bytes.starts_with("BM"sv) && bytes.size() > 18 && bytes.substr(15, 3) == "\0\0\0"sv) return "bmp";
  return {};
}

Unwrapped pictureWithin(const Bytes& field) {
  const std::string_view bytes = asView(field);
  if (!pictureEnding(bytes).empty()) return {Unwrapped::Kind::Picture, {}, {}};
  const std::string size = std::to_string(bytes.size()) + (bytes.size() > 1 ? " octets" : " octet");
  try {
    const Object object = objectIn(bytes);
    const std::string program = "objet « " + plain(object.program) + " »";
    std::string_view picture = object.data;
    if (object.program == "Package") picture = fileOfPackage(object.data);
    const std::string_view ending = pictureEnding(picture);
    if (ending.empty()) return {Unwrapped::Kind::Unknown, {}, program + " sans image connue, " + size};
    return {Unwrapped::Kind::Freed, Bytes(picture.begin(), picture.end()),
            program + ", image " + std::string(ending)};
  } catch (const Malformed&) {
    return {Unwrapped::Kind::Unknown, {}, size};
  }
}

}  // namespace tavoline::tool
