#include "support/Verbs.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstring>
#include <map>

namespace tavoline::test {

namespace {

std::map<std::string, std::vector<VerbHelp>>& rooms() {
  static std::map<std::string, std::vector<VerbHelp>> all;
  return all;
}

}  // namespace

std::string VerbHelp::name() const {
  for (const std::string& word : words(form)) {
    const bool argument = std::all_of(word.begin(), word.end(),
                                      [](unsigned char c) { return std::isupper(c) || std::isdigit(c); });
    if (!argument && word[0] != '[') return word;
  }
  return form;
}

void registerVerbs(const std::string& room, const std::vector<VerbHelp>& verbs) {
  rooms()[room] = verbs;
}

bool tellVerbs(int argc, char** argv) {
  if (argc != 2 || std::strcmp(argv[1], "--verbs") != 0) return false;
  for (const auto& [room, verbs] : rooms())
    for (const VerbHelp& verb : verbs)
      std::printf("%-10s %-34s %s\n", room.c_str(), verb.form.c_str(), verb.help.c_str());
  return true;
}

}  // namespace tavoline::test
