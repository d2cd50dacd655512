#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace store {

// Eight bytes at once, for loops over many bytes.
inline constexpr std::size_t wordSize = sizeof(std::uint64_t);

// The place need not be aligned.
inline std::uint64_t wordAt(const char* place) {
  std::uint64_t word;
  std::memcpy(&word, place, wordSize);
  return word;
}

}  // namespace store
