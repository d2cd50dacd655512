#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace store {

// Stands for bytes that are too many to keep: others have another one. Proof against chance, not against
// somebody who looks for two texts with the same digest.
struct Digest {
  std::size_t size = 0;
  std::array<std::uint64_t, 4> lanes{};

  bool operator==(const Digest&) const = default;
};

// Digests bytes that come a piece at a time; how they are cut makes no difference.
class Digester {
 public:
  void take(std::string_view bytes);
  // Of all that was taken so far.
  Digest digest() const;

 private:
  static constexpr std::size_t blockSize = 64;
  using Lanes = decltype(Digest::lanes);
  static void take(Lanes& lanes, const char* block);

  // No text is likely to hold the bytes of the key, which would make a factor 0 and all before it forgotten.
  Lanes lanes_{0x9E8DB7C5F3A1E6D9, 0xC2F19BA7D58FE3B1, 0xD7A3F5918CE9B2CB, 0xB5E7C993FA8DD1A7};
  std::size_t size_ = 0;
  std::array<char, blockSize> rest_{};  // what did not fill a block yet
};

Digest digestOf(std::string_view bytes);

}  // namespace store
