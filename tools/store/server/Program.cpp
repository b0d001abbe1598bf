#include "tools/store/server/Program.h"

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include "data/value/Errors.h"

namespace tavoline::tool {

namespace {

std::vector<char*> pointersTo(std::vector<std::string>& words) {
  std::vector<char*> pointers;
  pointers.reserve(words.size() + 1);
  for (std::string& word : words) pointers.push_back(word.data());
  pointers.push_back(nullptr);
  return pointers;
}

bool run(std::vector<std::string> words, const std::string& password) {
  std::vector<std::string> surroundings;
  for (char** one = environ; *one; ++one)
    if (password.empty() || !std::string_view(*one).starts_with("PGPASSWORD="))
      surroundings.emplace_back(*one);
  if (!password.empty()) surroundings.push_back("PGPASSWORD=" + password);
  pid_t child = 0;
  if (::posix_spawnp(&child, words.front().c_str(), nullptr, nullptr, pointersTo(words).data(),
                     pointersTo(surroundings).data()) != 0)
    throw StoreError("Le programme « " + words.front() +
                     " » manque sur cet ordinateur. Installez le paquet « postgresql-client ».");
  int status = 0;
  return ::waitpid(child, &status, 0) == child && status == 0;
}

}  // namespace

bool runProgram(const std::vector<std::string>& words, const postgres::Address& address) {
  const postgres::Spoken spoken = postgres::spoken(address);
  std::vector<std::string> all = words;
  all.push_back("--dbname=" + spoken.words);
  return run(std::move(all), spoken.password);
}

bool runProgram(const std::vector<std::string>& words) {
  return run(words, {});
}

}  // namespace tavoline::tool
