#pragma once

#include <vector>

#include "skin/pixels.h"

// Stretching a face of any size without distorting its corners: they are copied pixel by pixel, edges are
// stretched along one axis and the middle along both.
namespace skin {

// Pixels that stay as they are at each end of both axes: a quarter of the image's shorter side.
int cornerOf(int width, int height);

// Where one pixel of the stretched axis comes from: between `first` and `second`, `share` 256ths of the way.
struct SourcePixel {
  int first = 0;
  int second = 0;
  int share = 0;

  bool operator==(const SourcePixel&) const = default;
};

// The source of each of `target` pixels along an axis of `source` pixels (more than twice `corner`). A target
// shorter than both corners keeps the outermost pixels of each.
std::vector<SourcePixel> stretchedAxis(int source, int corner, int target);

// The image at another size; empty when the image or the size is.
Pixels stretchFace(const Pixels& image, int width, int height);

}  // namespace skin
