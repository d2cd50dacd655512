#pragma once

#include "skin/pixels.h"

namespace skin {

struct ButtonState {
  bool hot = false;  // the mouse is over it
  bool pressed = false;
  bool focused = false;  // and the focus is to be shown
  bool isDefault = false;
  bool disabled = false;
};

// The colours that a face is mixed with, 0xRRGGBB.
struct ButtonColours {
  std::uint32_t ground = 0;  // behind the button
  std::uint32_t ink = 0;     // rings, and the tone of a pressed face
};

// The image stretched to the size, changed as the state wants it and laid over the ground: every pixel is
// opaque. Rings follow the image's own outline.
Pixels drawButtonFace(const Pixels& image, int width, int height, const ButtonState& state,
                      const ButtonColours& colours);

// Two colours, `share` 256ths of the second.
std::uint32_t mixColours(std::uint32_t a, std::uint32_t b, int share);

}  // namespace skin
