#include <cstddef>
#include <cstdint>

#include "fuzz/modem_input.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  handset::at::fuzz::listings({reinterpret_cast<const char*>(data), size});
  return 0;
}
