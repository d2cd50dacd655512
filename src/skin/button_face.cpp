#include "skin/button_face.h"

#include <algorithm>

#include "skin/nine_slice.h"

namespace skin {
namespace {

constexpr std::uint32_t hotGlow = 0x8CCBFF;
constexpr std::uint32_t colourBits = 0xFFFFFF;

int alphaAt(const Pixels& image, int x, int y) {
  const bool inside = x >= 0 && y >= 0 && x < image.width && y < image.height;
  return inside ? static_cast<int>(image.at(x, y) >> 24) : 0;
}

// How much of a pixel is left when the outline moves inwards by `distance` pixels, 0 to 255.
int shrunkAlpha(const Pixels& image, int x, int y, int distance) {
  int least = 255;
  for (int dy = -distance; dy <= distance && least > 0; ++dy)
    for (int dx = -distance; dx <= distance; ++dx)
      if (dx * dx + dy * dy <= distance * distance) least = std::min(least, alphaAt(image, x + dx, y + dy));
  return least;
}

void mixInto(Pixels& face, std::uint32_t colour, int share) {
  for (std::uint32_t& pixel : face.values)
    pixel = (pixel & ~colourBits) | mixColours(pixel & colourBits, colour, share);
}

// A line along the outline, between `outer` and `inner` pixels inside it.
void drawRing(Pixels& face, int outer, int inner, std::uint32_t colour, int share) {
  for (int y = 0; y < face.height; ++y)
    for (int x = 0; x < face.width; ++x) {
      const int covered = shrunkAlpha(face, x, y, outer) - shrunkAlpha(face, x, y, inner);
      std::uint32_t& pixel = face.at(x, y);
      pixel = (pixel & ~colourBits) | mixColours(pixel & colourBits, colour, share * covered / 255);
    }
}

}  // namespace

std::uint32_t mixColours(std::uint32_t a, std::uint32_t b, int share) {
  std::uint32_t result = 0;
  const auto part = static_cast<std::uint32_t>(std::clamp(share, 0, 256));
  for (const int shift : {0, 8, 16})
    result |= ((((a >> shift) & 255) * (256 - part) + ((b >> shift) & 255) * part + 128) / 256) << shift;
  return result;
}

Pixels drawButtonFace(const Pixels& image, int width, int height, const ButtonState& state,
                      const ButtonColours& colours) {
  Pixels face = stretchFace(image, width, height);
  if (state.disabled)
    mixInto(face, colours.ground, 160);
  else if (state.pressed)
    mixInto(face, colours.ink, 72);
  else if (state.hot)
    mixInto(face, hotGlow, 96);
  if (state.isDefault && !state.disabled) drawRing(face, 0, 2, colours.ink, 224);
  if (state.focused && !state.disabled) drawRing(face, 3, 4, colours.ink, 160);
  for (std::uint32_t& pixel : face.values) {
    const int opacity = static_cast<int>(pixel >> 24);
    pixel = ~colourBits | mixColours(colours.ground, pixel & colourBits, (opacity * 256 + 127) / 255);
  }
  return face;
}

}  // namespace skin
