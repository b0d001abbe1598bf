#include "support/TranscriptFile.h"

#include <gtest/gtest.h>
#include <sys/file.h>
#include <unistd.h>

#include <fcntl.h>

#include <fstream>
#include <sstream>

namespace tavoline::test {

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
      part->steps.push_back({std::exchange(file.raw, {}), line, {}, {}});
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
      if (step.expected != said->said) {
        step.rawSaid.clear();
        std::istringstream in(said->said);
        for (std::string line; std::getline(in, line);) step.rawSaid += "  " + line + '\n';
      }
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
