#include "store/digest.h"

#include "store/word.h"

namespace store {

namespace {

__extension__ using Product = unsigned __int128;
using Lanes = std::array<std::uint64_t, 4>;

// No text is likely to hold the bytes of the key, which would make a factor 0 and all before it forgotten.
constexpr Lanes starts{0x9E8DB7C5F3A1E6D9, 0xC2F19BA7D58FE3B1, 0xD7A3F5918CE9B2CB, 0xB5E7C993FA8DD1A7};
constexpr std::uint64_t key = 0xE9B1D38FA5F7C69D;

// A pair of words for each lane. Every bit of the pair and of the lane reaches every bit of what the lane
// becomes; the lanes do not wait for each other.
constexpr std::size_t blockSize = sizeof(Lanes) * 2;

void take(Lanes& lanes, const char* block) {
  for (std::uint64_t& lane : lanes) {
    const Product product = Product{lane ^ wordAt(block)} * (key ^ wordAt(block + wordSize));
    lane = static_cast<std::uint64_t>(product) ^ static_cast<std::uint64_t>(product >> 64);
    block += 2 * wordSize;
  }
}

}  // namespace

Digest digestOf(std::string_view bytes) {
  const std::size_t size = bytes.size();
  Lanes lanes = starts;
  for (; bytes.size() >= blockSize; bytes.remove_prefix(blockSize)) take(lanes, bytes.data());
  std::array<char, blockSize> rest{};
  bytes.copy(rest.data(), bytes.size());
  take(lanes, rest.data());
  return {size, lanes};
}

}  // namespace store
