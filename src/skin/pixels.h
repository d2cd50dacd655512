#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace skin {

// An image in memory, top row first. A pixel is 0xAARRGGBB; its colour is not multiplied by its alpha.
struct Pixels {
  int width = 0;
  int height = 0;
  std::vector<std::uint32_t> values;

  Pixels() = default;
  Pixels(int w, int h)
      : width(w), height(h), values(static_cast<std::size_t>(w) * static_cast<std::size_t>(h)) {}

  bool empty() const { return values.empty(); }
  std::uint32_t& at(int x, int y) { return values[index(x, y)]; }
  std::uint32_t at(int x, int y) const { return values[index(x, y)]; }

 private:
  std::size_t index(int x, int y) const {
    return static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x);
  }
};

}  // namespace skin
