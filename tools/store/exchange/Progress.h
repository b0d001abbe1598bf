#pragma once

#include <chrono>
#include <cstdint>
#include <string>

namespace tavoline::tool {

/// A bar on the terminal; nothing where the error output is none. Gone with the object.
class Progress {
 public:
  Progress();
  ~Progress();
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  void expect(std::int64_t rows) { expected_ = rows; }
  void at(std::string what) { what_ = std::move(what); }  ///< What the next rows are of.
  void step();                                            ///< One row more.

 private:
  void draw() const;

  bool shown_;
  std::int64_t expected_ = 0, done_ = 0;
  std::string what_;
  std::chrono::steady_clock::time_point drawn_;
};

}  // namespace tavoline::tool
