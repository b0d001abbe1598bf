#pragma once

#include <string>
#include <vector>

#include "support/Transcript.h"

namespace tavoline::test {

/// The text of a file of transcripts, taken apart so that it can be put together again to the letter.
struct TranscriptFile {
  struct Step {
    std::string raw, text;          ///< As it stands, with comments above it; the step alone.
    std::string rawSaid, expected;  ///< As it stands, from behind the step; a line each.
  };
  struct Part {
    std::string raw, title;
    int line = 0;  ///< Of the title, from 1.
    std::vector<Step> steps;
  };
  Part preface;
  std::vector<Part> cases;
  std::string raw;  ///< Behind the last step.

  static TranscriptFile read(const std::string& path);
  void write(const std::string& path) const;
};

/// Writes what the steps of a case said in place of what was expected of them.
void acceptInFile(const std::string& path, const std::string& title,
                  const std::vector<Transcript::Step>& steps);

}  // namespace tavoline::test
