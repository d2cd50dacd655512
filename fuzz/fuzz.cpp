#include "fuzz/targets.h"

// TARGET is the function that takes the input.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::TARGET({reinterpret_cast<const char*>(data), size});
  return 0;
}
