#include "support/TranscriptFile.h"

#include <gtest/gtest.h>
#include <sys/file.h>
#include <unistd.h>

#include <fcntl.h>

#include <algorithm>
#include <fstream>
#include <sstream>
#include <string_view>

namespace tavoline::test {

namespace {

constexpr std::string_view kArrow = " -> ", kBetween = "; ", kThen = " then ";
constexpr std::size_t kWidth = 110;  // characters of a line

std::size_t width(std::string_view utf8) {
  return static_cast<std::size_t>(
      std::count_if(utf8.begin(), utf8.end(), [](char c) { return (c & 0xC0) != 0x80; }));
}

// The steps of a line; what stands behind the arrow is said by the last one.
void addSteps(std::vector<TranscriptFile::Step>& steps, std::string raw, std::string line) {
  raw.pop_back();
  TranscriptFile::Step last{{}, {}, "\n", {}};
  if (const auto arrow = line.find(kArrow); arrow != line.npos) {
    last.rawSaid = line.substr(arrow) + '\n';
    raw.resize(raw.size() - (line.size() - arrow));
    std::string rest = line.substr(arrow + kArrow.size());
    line.resize(arrow);
    for (auto end = rest.find(kBetween); end != rest.npos; end = rest.find(kBetween)) {
      last.expected += rest.substr(0, end) + '\n';
      rest.erase(0, end + kBetween.size());
    }
    last.expected += rest + '\n';
  }
  for (auto end = line.find(kThen); end != line.npos; end = line.find(kThen)) {
    const std::size_t rawEnd = raw.find(kThen, raw.size() - line.size());
    steps.push_back({raw.substr(0, rawEnd), line.substr(0, end), std::string(kThen), {}});
    raw.erase(0, rawEnd + kThen.size());
    line.erase(0, end + kThen.size());
  }
  last.raw = std::move(raw);
  last.text = std::move(line);
  steps.push_back(std::move(last));
}

// Behind the step where there is room for all, else beneath it.
std::string written(const std::string& step, const std::string& said) {
  if (said.empty()) return "\n";
  std::string beneath = "\n", behind;
  std::istringstream in(said);
  bool plain = true;
  for (std::string line; std::getline(in, line);) {
    beneath += "  " + line + '\n';
    behind += (behind.empty() ? kArrow : kBetween);
    behind += line;
    plain = plain && !line.empty() && line.find(kBetween) == line.npos;
  }
  const auto start = step.rfind('\n') == step.npos ? 0 : step.rfind('\n') + 1;
  return plain && width(step.substr(start)) + width(behind) <= kWidth ? behind + '\n' : beneath;
}

}  // namespace

TranscriptFile TranscriptFile::read(const std::string& path) {
  TranscriptFile file;
  Part* part = &file.preface;
  std::ifstream in(path);
  int number = 0;
  for (std::string line; std::getline(in, line);) {
    ++number;
    file.raw += line + '\n';
    const auto first = line.find_first_not_of(' ');
    if (first == std::string::npos || line[first] == '#') continue;
    const int start = number;
    for (std::string more; line.ends_with(" \\") && std::getline(in, more); ++number) {
      file.raw += more + '\n';
      line.replace(line.size() - 1, 1, more.substr(more.find_first_not_of(' ')));
    }
    if (line.starts_with("== ")) {
      part = &file.cases.emplace_back(Part{std::exchange(file.raw, {}), line, start, {}});
    } else if (!line.starts_with("  ")) {
      addSteps(part->steps, std::exchange(file.raw, {}), line);
    } else if (!part->steps.empty()) {
      part->steps.back().rawSaid += std::exchange(file.raw, {});
      part->steps.back().expected += line.substr(2) + '\n';
    }
  }
  return file;
}

void TranscriptFile::write(const std::string& path) const {
  std::ofstream out(path);
  const auto put = [&](const Part& part) {
    out << part.raw;
    for (const Step& step : part.steps) out << step.raw << step.rawSaid;
  };
  put(preface);
  for (const Part& part : cases) put(part);
  out << raw;
}

void acceptInFile(const std::string& path, const std::string& title,
                  const std::vector<Transcript::Step>& steps) {
  // Cases of the same file may run at the same time.
  const int lock = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  ::flock(lock, LOCK_EX);
  TranscriptFile file = TranscriptFile::read(path);
  auto said = steps.begin();
  const auto accept = [&](TranscriptFile::Part& part) {
    for (TranscriptFile::Step& step : part.steps) {
      if (said == steps.end()) return;
      if (step.expected != said->said) step.rawSaid = written(step.raw, said->said);
      ++said;
    }
  };
  accept(file.preface);
  for (TranscriptFile::Part& part : file.cases)
    if (part.title == title) {
      accept(part);
      GTEST_LOG_(INFO) << "accepted in " << path << ":" << part.line;
      break;
    }
  file.write(path);
  ::close(lock);
}

}  // namespace tavoline::test
