#include "store/digest.h"

#include <algorithm>

#include "store/word.h"

namespace store {

namespace {

__extension__ using Product = unsigned __int128;

constexpr std::uint64_t key = 0xE9B1D38FA5F7C69D;

}  // namespace

// A pair of words for each lane. Every bit of the pair and of the lane reaches every bit of what the lane
// becomes; the lanes do not wait for each other.
void Digester::take(Lanes& lanes, const char* block) {
  static_assert(blockSize == 2 * sizeof(Lanes));
  for (std::uint64_t& lane : lanes) {
    const Product product = Product{lane ^ wordAt(block)} * (key ^ wordAt(block + wordSize));
    lane = static_cast<std::uint64_t>(product) ^ static_cast<std::uint64_t>(product >> 64);
    block += 2 * wordSize;
  }
}

void Digester::take(std::string_view bytes) {
  const std::size_t held = size_ % blockSize;
  size_ += bytes.size();
  if (held > 0) {
    const std::size_t filled = bytes.copy(rest_.data() + held, blockSize - held);
    if (held + filled < blockSize) return;
    take(lanes_, rest_.data());
    bytes.remove_prefix(filled);
  }
  Lanes lanes = lanes_;
  for (; bytes.size() >= blockSize; bytes.remove_prefix(blockSize)) take(lanes, bytes.data());
  lanes_ = lanes;
  bytes.copy(rest_.data(), bytes.size());
}

Digest Digester::digest() const {
  std::array<char, blockSize> last{};
  std::copy_n(rest_.begin(), size_ % blockSize, last.begin());
  Digest digest{size_, lanes_};
  take(digest.lanes, last.data());
  return digest;
}

Digest digestOf(std::string_view bytes) {
  Digester digester;
  digester.take(bytes);
  return digester.digest();
}

}  // namespace store
