#include <cstddef>
#include <cstdint>

#include "fuzz/entries_input.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::entries({reinterpret_cast<const char*>(data), size});
  return 0;
}
