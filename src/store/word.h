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

inline constexpr std::uint64_t highBits = 0x8080808080808080;
inline constexpr std::uint64_t blanks = 0x2020202020202020;

// The high bits of the characters that are not plain text, up to the first of them; behind it there may be
// more. What is below a blank borrows from its high bit.
inline std::uint64_t notPlain(std::uint64_t word) {
  return (word | (word - blanks)) & highBits;
}

}  // namespace store
