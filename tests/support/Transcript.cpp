#include "support/Transcript.h"

#include <gtest/gtest.h>

#include <cctype>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "data/value/Errors.h"
#include "support/TranscriptFile.h"

namespace tavoline::test {

namespace {

std::string indented(const std::string& text) {
  std::string all;
  std::istringstream in(text);
  for (std::string line; std::getline(in, line);) all += "  " + line + '\n';
  return all;
}

// Many of these failures have one sentence in common, and differ in their detail.
std::string toldApart(const Error& error) {
  return error.detail().empty() ? error.what() : error.detail();
}

class Case : public testing::Test {
 public:
  Case(std::string title, Transcript script, std::function<void(Transcript&)> play)
      : title_(std::move(title)), script_(std::move(script)), play_(std::move(play)) {}

  void TestBody() override {
    play_(script_);
    std::string expected, said;
    bool expects = false;
    for (const Transcript::Step& step : script_.steps()) {
      expects |= !step.expected.empty();
      expected += step.text + '\n' + indented(step.expected);
      said += step.text + '\n' + indented(step.said);
    }
    const bool accept = std::getenv("TAVOLINE_ACCEPT") && script_.over() && !HasFailure();
    if (accept && said != expected) return acceptInFile(script_.file(), title_, script_.steps());
    EXPECT_TRUE(expects) << "it expects nothing";
    EXPECT_TRUE(script_.over()) << "it stops at: " << script_.step();
    EXPECT_EQ(said, expected);
  }

 private:
  const std::string title_;
  Transcript script_;
  const std::function<void(Transcript&)> play_;
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

void registerFile(const std::string& path, const std::function<void(Transcript&)>& play,
                  const std::string& on) {
  const std::string suite = on + nameOf(std::filesystem::path(path).stem());
  const TranscriptFile file = TranscriptFile::read(path);
  for (const TranscriptFile::Part& part : file.cases) {
    std::vector<Transcript::Step> steps;
    for (const auto* each : {&file.preface, &part})
      for (const TranscriptFile::Step& step : each->steps) steps.push_back({step.text, step.expected, {}});
    testing::RegisterTest(suite.c_str(), nameOf(part.title).c_str(), nullptr, nullptr, path.c_str(),
                          part.line, [=]() -> testing::Test* {
                            return new Case(part.title, {path, steps}, play);
                          });
  }
  if (!file.cases.empty()) return;
  testing::RegisterTest(suite.c_str(), "HasNoCase", nullptr, nullptr, path.c_str(), 1,
                        [=]() -> testing::Test* {
                          return new Case({}, {path, {}}, [](Transcript&) {});  // which cannot pass
                        });
}

}  // namespace

Transcript::Transcript(std::string file, std::vector<Step> steps)
    : file_(std::move(file)), steps_(std::move(steps)) {}

bool Transcript::next() {
  if (over()) return false;
  ++at_;
  return true;
}

void Transcript::say(const std::string& text) {
  std::istringstream in(text);
  for (std::string line; std::getline(in, line);) steps_[at_ - 1].said += line + '\n';
}

void Transcript::forget(std::size_t step, const std::function<bool(const std::string& line)>& which) {
  std::istringstream in(std::exchange(steps_.at(step).said, {}));
  for (std::string line; std::getline(in, line);)
    if (!which(line)) steps_[step].said += line + '\n';
}

void Transcript::attempt(const std::function<void()>& action) {
  try {
    action();
  } catch (const StatementError& error) {
    say("! " + toldApart(error));
  } catch (const DatasetError& error) {
    say("! " + toldApart(error));
  } catch (const std::exception& error) {
    say(std::string("! ") + error.what());
  }
}

bool registerTranscripts(const std::string& files, const std::function<void(Transcript&)>& play,
                         const std::string& on) {
  for (const std::string& file : words(files)) registerFile(file, play, on);
  return true;
}

std::string answers(const std::string& text, const std::function<void(Transcript&)>& play) {
  std::vector<Transcript::Step> steps;
  std::istringstream in(text);
  for (std::string line; std::getline(in >> std::ws, line);) steps.push_back({line, {}, {}});
  Transcript script({}, steps);
  play(script);
  std::string all;
  for (const Transcript::Step& step : script.steps()) all += step.said;
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
