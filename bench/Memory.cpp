#include "bench/Memory.h"

#include <cstdio>
#include <memory>
#include <stdexcept>

namespace tavoline::bench {

Memory measureMemory(const std::string& program, const Scene& scene, int orders) {
  const std::string command = '\'' + program + "' '" + scene.folder() + "' " + std::to_string(orders);
  const auto close = [](FILE* pipe) { pclose(pipe); };
  const std::unique_ptr<FILE, decltype(close)> output(popen(command.c_str(), "r"), close);
  Memory memory;
  if (!output ||
      std::fscanf(output.get(), "%lf %lf %lf", &memory.resident, &memory.peak, &memory.sessions) != 3)
    throw std::runtime_error("no answer from " + program);
  return memory;
}

}  // namespace tavoline::bench
