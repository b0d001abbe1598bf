// The dialect under libFuzzer: fuzz_dialect [CORPUS] [-max_total_time=SECONDS]

#include <cstddef>
#include <cstdint>

#include "fuzz/FuzzDialect.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  tavoline::test::fuzzDialect({reinterpret_cast<const char*>(data), size});
  return 0;
}
