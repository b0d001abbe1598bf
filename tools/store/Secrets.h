#pragma once

#include <functional>
#include <optional>
#include <string>

#include "tools/store/Arguments.h"

namespace tavoline::tool {

/// Asks somebody at the terminal for what must not be seen; nothing where there is nobody to ask.
using AskSecret = std::function<std::optional<std::string>(const std::string& question)>;

/// At the terminal of this process, without an echo.
std::optional<std::string> askAtTerminal(const std::string& question);

/// The password of a first account.
struct FirstPassword {
  std::string text;
  bool made = false;  ///< By chance: it has to be told, once.
};

/// What --password gives, or the first line of the file that --password-file names ("-" is the standard
/// input), or what is answered twice, or else six figures by chance. Throws UsageError.
FirstPassword firstPassword(const Arguments& arguments, const AskSecret& ask);

}  // namespace tavoline::tool
