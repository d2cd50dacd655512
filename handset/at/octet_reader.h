#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>

namespace handset::at {

// Walks over octets and never past their end: what is missing reads as nothing, and failed() remembers it.
// Borrows the octets.
class OctetReader {
 public:
  explicit OctetReader(std::span<const std::uint8_t> octets) : rest_{octets} {}

  std::uint8_t next() {
    const std::span<const std::uint8_t> one = take(1);
    return one.empty() ? std::uint8_t{0} : one.front();
  }

  // Fewer than `count` at the end.
  std::span<const std::uint8_t> take(std::size_t count) {
    failed_ = failed_ || count > rest_.size();
    const std::span<const std::uint8_t> taken = rest_.first(std::min(count, rest_.size()));
    rest_ = rest_.subspan(taken.size());
    return taken;
  }

  bool failed() const { return failed_; }

 private:
  std::span<const std::uint8_t> rest_;
  bool failed_ = false;
};

}  // namespace handset::at
