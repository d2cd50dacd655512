#include "skin/nine_slice.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using skin::Pixels;
using skin::SourcePixel;

// Every pixel another colour, so that a misplaced one shows.
Pixels chequered(int width, int height) {
  Pixels image(width, height);
  for (int y = 0; y < height; ++y)
    for (int x = 0; x < width; ++x)
      image.at(x, y) = 0xFF000000U | static_cast<std::uint32_t>(x * 37 % 256 << 16 | y * 53 % 256 << 8);
  return image;
}

TEST(StretchedAxis, CopiesTheEndsAndSpreadsTheMiddle) {
  const auto copied = [](int i) { return SourcePixel{i, i, 0}; };
  struct Case {
    const char* name;
    int source, corner, target;
    std::vector<SourcePixel> axis;
  };
  for (const Case& c : {
           Case{"same size", 4, 1, 4, {copied(0), {1, 2, 0}, {2, 2, 0}, copied(3)}},
           Case{"twice the middle",
                4,
                1,
                6,
                {copied(0), {1, 2, 0}, {1, 2, 64}, {1, 2, 192}, {2, 2, 0}, copied(3)}},
           Case{"half the middle", 6, 1, 4, {copied(0), {1, 2, 128}, {3, 4, 128}, copied(5)}},
           Case{"corners only", 6, 2, 4, {copied(0), copied(1), copied(4), copied(5)}},
           Case{"less than the corners", 8, 2, 3, {copied(0), copied(6), copied(7)}},
           Case{"one pixel", 8, 2, 1, {copied(7)}},
           Case{"nothing", 8, 2, 0, {}},
           Case{"no room", 8, 2, -5, {}},
           Case{"a source of one", 1, 0, 3, {copied(0), copied(0), copied(0)}},
       })
    EXPECT_EQ(skin::stretchedAxis(c.source, c.corner, c.target), c.axis) << c.name;
}

TEST(StretchFace, KeepsEveryCornerPixelAtAnySize) {
  const Pixels image = chequered(60, 24);
  const int corner = skin::cornerOf(60, 24);
  ASSERT_EQ(corner, 6);
  struct Size {
    int width, height;
  };
  for (const Size& size :
       {Size{60, 24}, Size{12, 12}, Size{104, 32}, Size{7, 300}, Size{1000, 3}, Size{1, 1}}) {
    const Pixels face = skin::stretchFace(image, size.width, size.height);
    ASSERT_EQ(face.values.size(),
              static_cast<std::size_t>(size.width) * static_cast<std::size_t>(size.height));
    // A face smaller than its corners shows the outermost pixels of each.
    for (int y = 0; y < std::min(corner, size.height / 2); ++y)
      for (int x = 0; x < std::min(corner, size.width / 2); ++x) {
        const int right = size.width - 1 - x;
        const int bottom = size.height - 1 - y;
        EXPECT_EQ(face.at(x, y), image.at(x, y)) << size.width << ": " << x << ',' << y;
        EXPECT_EQ(face.at(right, y), image.at(59 - x, y)) << size.width << ": " << x << ',' << y;
        EXPECT_EQ(face.at(x, bottom), image.at(x, 23 - y)) << size.width << ": " << x << ',' << y;
        EXPECT_EQ(face.at(right, bottom), image.at(59 - x, 23 - y)) << size.width << ": " << x << ',' << y;
      }
  }
}

TEST(StretchFace, TakesImagesOfAnySizeIncludingNone) {
  for (int width = 0; width < 10; ++width)
    for (int height = 0; height < 10; ++height)
      for (const int target : {-1, 0, 1, 2, 5, 40}) {
        const Pixels face = skin::stretchFace(chequered(width, height), target, 7);
        EXPECT_EQ(face.empty(), width * height == 0 || target <= 0)
            << width << 'x' << height << ' ' << target;
      }
}

TEST(StretchFace, ColoursHiddenByTransparencyDoNotShine) {
  Pixels image(8, 8);
  for (int y = 0; y < 8; ++y)
    for (int x = 0; x < 8; ++x) image.at(x, y) = x < 4 ? 0x0000FF00U : 0xFFFF0000U;
  const Pixels face = skin::stretchFace(image, 40, 8);
  bool softened = false;
  for (const std::uint32_t pixel : face.values) {
    softened |= (pixel >> 24) > 0 && (pixel >> 24) < 255;
    EXPECT_TRUE(pixel >> 24 == 0 || (pixel & 0xFFFFFF) == 0xFF0000U) << std::hex << pixel;
  }
  EXPECT_TRUE(softened);
}

}  // namespace
