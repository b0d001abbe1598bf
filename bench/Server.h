#pragma once

#include <sys/types.h>

#include <memory>
#include <string>

#include "bench/Scene.h"

namespace tavoline::test {
class Relay;
}

namespace tavoline::bench {

bool onServer(const Scene& scene);

/// The same store on the same server, half a millisecond away in each direction.
class FarScene {
 public:
  explicit FarScene(const Scene& near);
  ~FarScene();
  FarScene(const FarScene&) = delete;
  FarScene& operator=(const FarScene&) = delete;
  const Scene& scene() const { return *scene_; }

 private:
  std::unique_ptr<test::Relay> relay_;
  std::unique_ptr<Scene> scene_;
};

/// Another till, which reads a year of statistics of this store again and again.
class LongRead {
 public:
  explicit LongRead(const std::string& memoryProgram);
  ~LongRead();
  LongRead(const LongRead&) = delete;
  LongRead& operator=(const LongRead&) = delete;

 private:
  pid_t reader_ = 0;
  int told_ = -1;
};

}  // namespace tavoline::bench
