#include "tools/store/Arguments.h"

#include <algorithm>
#include <charconv>

namespace tavoline::tool {

Arguments::Arguments(const std::vector<std::string>& words, std::size_t files,
                     const std::vector<std::string_view>& options,
                     const std::vector<std::string_view>& flags) {
  const auto among = [](const std::vector<std::string_view>& names, std::string_view name) {
    return std::find(names.begin(), names.end(), name) != names.end();
  };
  for (std::size_t i = 0; i < words.size(); ++i) {
    const std::string& word = words[i];
    if (!word.starts_with("--")) {
      files_.push_back(word);
      continue;
    }
    const std::size_t equals = word.find('=');
    const std::string name = word.substr(0, equals);
    if (among(flags, name) && equals == std::string::npos)
      values_[name];
    else if (!among(options, name))
      throw UsageError("option inconnue « " + word + " »");
    else if (equals != std::string::npos)
      values_[name] = word.substr(equals + 1);
    else if (++i < words.size())
      values_[name] = words[i];
    else
      throw UsageError("l'option " + name + " attend une valeur");
  }
  if (files_.size() < files) throw UsageError("il manque le nom d'un fichier");
  if (files_.size() > files) throw UsageError("« " + files_[files] + " » est de trop");
}

std::string Arguments::text(std::string_view name, std::string_view otherwise) const {
  const auto found = values_.find(name);
  return found == values_.end() ? std::string(otherwise) : found->second;
}

std::int64_t Arguments::number(std::string_view name, std::int64_t otherwise, std::int64_t highest) const {
  const auto found = values_.find(name);
  if (found == values_.end()) return otherwise;
  const std::string& digits = found->second;
  std::int64_t value = -1;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
  if (error != std::errc() || end != digits.data() + digits.size() || value < 0 || value > highest)
    throw UsageError("l'option " + std::string(name) + " attend un nombre entier de 0 à " +
                     std::to_string(highest));
  return value;
}

}  // namespace tavoline::tool
