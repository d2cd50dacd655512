#include "skin/nine_slice.h"

#include <algorithm>
#include <array>

namespace skin {
namespace {

constexpr int whole = 256;

// One colour channel between two pixels. Colours count by their alpha, so that what hides behind a
// transparent pixel does not shine through at a soft edge.
std::uint32_t mixed(std::uint32_t a, std::uint32_t b, int share) {
  if (share == 0 || a == b) return a;
  const auto part = static_cast<std::uint32_t>(share);
  const std::uint32_t weightA = (a >> 24) * (whole - part);
  const std::uint32_t weightB = (b >> 24) * part;
  const std::uint32_t weight = weightA + weightB;
  if (weight == 0) return 0;
  std::uint32_t result = ((weight + whole / 2) / whole) << 24;
  for (const int shift : std::array{0, 8, 16}) {
    const std::uint32_t sum = ((a >> shift) & 255) * weightA + ((b >> shift) & 255) * weightB;
    result |= ((sum + weight / 2) / weight) << shift;
  }
  return result;
}

}  // namespace

int cornerOf(int width, int height) {
  return std::min(width, height) / 4;
}

std::vector<SourcePixel> stretchedAxis(int source, int corner, int target) {
  std::vector<SourcePixel> axis(static_cast<std::size_t>(std::max(target, 0)));
  const int head = std::min(corner, target / 2);
  const int tail = std::min(corner, target - head);
  const int middle = source - 2 * corner;
  const int stretched = target - head - tail;
  for (int i = 0; i < target; ++i) {
    SourcePixel& pixel = axis[static_cast<std::size_t>(i)];
    if (i < head) {
      pixel = {i, i, 0};
    } else if (i >= target - tail) {
      pixel = {source - (target - i), source - (target - i), 0};
    } else {
      // Centres of pixels correspond; beyond the outermost centres the edge's colour goes on.
      const long long doubled = (2LL * (i - head) + 1) * middle * whole / stretched - whole;
      const long long place = std::clamp(doubled / 2, 0LL, (middle - 1LL) * whole);
      pixel.first = corner + static_cast<int>(place / whole);
      pixel.second = std::min(pixel.first + 1, corner + middle - 1);
      pixel.share = static_cast<int>(place % whole);
    }
  }
  return axis;
}

Pixels stretchFace(const Pixels& image, int width, int height) {
  if (image.empty() || width <= 0 || height <= 0) return {};
  const int corner = cornerOf(image.width, image.height);
  const auto columns = stretchedAxis(image.width, corner, width);
  const auto rows = stretchedAxis(image.height, corner, height);
  Pixels face(width, height);
  auto out = face.values.begin();
  for (const SourcePixel& y : rows) {
    for (const SourcePixel& x : columns) {
      const std::uint32_t upper = mixed(image.at(x.first, y.first), image.at(x.second, y.first), x.share);
      const std::uint32_t lower = mixed(image.at(x.first, y.second), image.at(x.second, y.second), x.share);
      *out++ = mixed(upper, lower, y.share);
    }
  }
  return face;
}

}  // namespace skin
