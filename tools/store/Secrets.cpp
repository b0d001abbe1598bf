#include "tools/store/Secrets.h"

#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

#include <fstream>
#include <iostream>
#include <random>

namespace tavoline::tool {
namespace {

/// The terminal as it is, but for the echo.
class Silence {
 public:
  explicit Silence(int terminal) : terminal_(terminal) {
    if (::tcgetattr(terminal_, &before_) != 0) return;
    termios silent = before_;
    silent.c_lflag &= ~static_cast<tcflag_t>(ECHO);
    changed_ = ::tcsetattr(terminal_, TCSAFLUSH, &silent) == 0;
  }
  ~Silence() {
    if (changed_) ::tcsetattr(terminal_, TCSAFLUSH, &before_);
  }
  Silence(const Silence&) = delete;
  Silence& operator=(const Silence&) = delete;

 private:
  int terminal_;
  termios before_{};
  bool changed_ = false;
};

std::string sixFigures() {
  std::random_device chance;  // the system's own, which nobody foresees
  std::uniform_int_distribution<int> figure('0', '9');
  std::string code(6, '0');
  for (char& c : code) c = static_cast<char>(figure(chance));
  return code;
}

std::string firstLineOf(const std::string& name) {
  std::ifstream file;
  if (name != "-") file.open(name);
  std::istream& lines = name == "-" ? std::cin : file;
  std::string line;
  if (!std::getline(lines, line))
    throw UsageError("le mot de passe ne peut pas être lu dans « " + name + " »");
  if (line.ends_with('\r')) line.pop_back();
  return line;
}

}  // namespace

std::optional<std::string> askAtTerminal(const std::string& question) {
  if (::isatty(STDIN_FILENO) == 0 || ::isatty(STDERR_FILENO) == 0) return std::nullopt;
  std::string answer;
  std::cerr << question << " : " << std::flush;
  {
    const Silence silence(STDIN_FILENO);
    std::getline(std::cin, answer);
  }
  std::cerr << '\n';
  if (!std::cin) throw UsageError("aucun mot de passe n'a été donné");
  return answer;
}

FirstPassword firstPassword(const Arguments& arguments, const AskSecret& ask) {
  if (arguments.has("--password") && arguments.has("--password-file"))
    throw UsageError("--password et --password-file s'excluent");
  if (arguments.has("--password")) return {arguments.text("--password", "")};
  if (arguments.has("--password-file")) return {firstLineOf(arguments.text("--password-file", ""))};
  const auto answer = ask ? ask("Mot de passe du premier compte") : std::nullopt;
  if (!answer) return {sixFigures(), true};
  if (ask("Le même, encore une fois").value_or("") != *answer)
    throw UsageError("les deux mots de passe diffèrent : rien n'a été créé");
  return {*answer};
}

}  // namespace tavoline::tool
