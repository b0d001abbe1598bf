#include "support/Transcript.h"

#include <gtest/gtest.h>

#include <cctype>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace tavoline::test {

namespace {

bool isSaid(const std::string& line) {
  return line.starts_with("  ");
}

class Case : public testing::Test {
 public:
  Case(Transcript script, std::function<void(Transcript&)> play)
      : script_(std::move(script)), play_(std::move(play)) {}

  void TestBody() override {
    play_(script_);
    EXPECT_NE(script_.expected().find("\n  "), std::string::npos) << "it expects nothing";
    EXPECT_EQ(script_.said(), script_.expected());
  }

 private:
  Transcript script_;
  std::function<void(Transcript&)> play_;
};

// "a wrong password" as AWrongPassword.
std::string nameOf(const std::string& title) {
  std::string name;
  bool capital = true;
  for (const char c : title) {
    const auto letter = static_cast<unsigned char>(c);
    if (std::isalnum(letter))
      name += static_cast<char>(std::exchange(capital, false) ? std::toupper(letter) : c);
    else
      capital = true;
  }
  return name;
}

void registerFile(const std::string& file, const std::function<void(Transcript&)>& play) {
  const std::string suite = nameOf(std::filesystem::path(file).stem());
  std::vector<std::string> preface, lines;
  std::string title;
  int number = 0, start = 0;
  const auto finish = [&] {
    if (start == 0) return;
    testing::RegisterTest(suite.c_str(), nameOf(title).c_str(), nullptr, nullptr, file.c_str(), start,
                          [=]() -> testing::Test* {
                            return new Case({file, lines}, play);
                          });
  };
  std::ifstream in(file);
  for (std::string line; std::getline(in, line);) {
    ++number;
    const auto first = line.find_first_not_of(' ');
    if (first == std::string::npos || line[first] == '#') continue;
    for (std::string more; line.ends_with(" \\") && std::getline(in, more); ++number)
      line.replace(line.size() - 1, 1, more.substr(more.find_first_not_of(' ')));
    if (line.starts_with("== ")) {
      finish();
      title = line;
      start = number;
      lines = preface;
    } else {
      (start ? lines : preface).push_back(line);
    }
  }
  if (start == 0) title = "has no case", start = 1;  // which cannot pass
  finish();
}

}  // namespace

Transcript::Transcript(std::string file, std::vector<std::string> lines)
    : file_(std::move(file)), lines_(std::move(lines)) {
  for (const std::string& line : lines_)
    if (!isSaid(line)) steps_.push_back(line);
}

bool Transcript::next() {
  if (at_ == steps_.size()) return false;
  said_ += steps_[at_++] + '\n';
  return true;
}

void Transcript::say(const std::string& text) {
  std::istringstream in(text);
  for (std::string line; std::getline(in, line);) said_ += "  " + line + '\n';
}

void Transcript::attempt(const std::function<void()>& action) {
  try {
    action();
  } catch (const std::exception& error) {
    say(std::string("! ") + error.what());
  }
}

std::string Transcript::expected() const {
  std::string all;
  for (const std::string& line : lines_) all += line + '\n';
  return all;
}

bool registerTranscripts(const std::string& files, const std::function<void(Transcript&)>& play) {
  for (const std::string& file : words(files)) registerFile(file, play);
  return true;
}

std::string answers(const std::string& steps, const std::function<void(Transcript&)>& play) {
  std::vector<std::string> lines;
  std::istringstream in(steps);
  for (std::string line; std::getline(in >> std::ws, line);) lines.push_back(line);
  Transcript script({}, lines);
  play(script);
  std::string all;
  std::istringstream said(script.said());
  for (std::string line; std::getline(said, line);)
    if (isSaid(line)) all += line.substr(2) + '\n';
  return all;
}

std::string takeWord(std::string& text) {
  const auto start = std::min(text.find_first_not_of(' '), text.size());
  const bool quoted = start < text.size() && text[start] == '"';
  const auto end = std::min(text.find(quoted ? '"' : ' ', start + 1), text.size());
  std::string word = text.substr(start + quoted, end - start - quoted);
  const auto rest = std::min(text.find_first_not_of(' ', end + quoted), text.size());
  text.erase(0, rest);
  return word;
}

std::vector<std::string> words(const std::string& text) {
  std::vector<std::string> all;
  for (std::string rest = text; !rest.empty();) all.push_back(takeWord(rest));
  return all;
}

}  // namespace tavoline::test
