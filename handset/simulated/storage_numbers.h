#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

namespace handset {

// Which storage numbers of one store are taken. Handsets count from 1; 0 and below may be taken, as a file
// may say so, but are never given out.
class StorageNumbers {
 public:
  void take(std::int16_t number) {
    if (number > 0) taken_[static_cast<std::size_t>(number)] = true;
  }

  bool isTaken(std::int16_t number) const { return number > 0 && taken_[static_cast<std::size_t>(number)]; }

  // Takes the lowest free number; 0 when the store is full.
  std::int16_t takeFree() {
    while (lowest_ < taken_.size() && taken_[lowest_]) ++lowest_;
    if (lowest_ == taken_.size()) return 0;
    taken_[lowest_] = true;
    return static_cast<std::int16_t>(lowest_);
  }

 private:
  std::vector<bool> taken_ = std::vector<bool>(std::size_t{std::numeric_limits<std::int16_t>::max()} + 1);
  std::size_t lowest_ = 1;
};

}  // namespace handset
