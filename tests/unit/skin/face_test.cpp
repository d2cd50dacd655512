#include <gtest/gtest.h>

#include <set>

#include "skin/button_face.h"
#include "skin/nine_slice.h"

namespace {

using skin::Pixels;

constexpr skin::ButtonColours colours{0xD4DEEA, 0x0B4F95};

// Grows redder to the right and bluer to the bottom.
Pixels gradient(int side) {
  Pixels image(side, side);
  for (int y = 0; y < side; ++y)
    for (int x = 0; x < side; ++x)
      image.at(x, y) = 0xFF000000U | static_cast<std::uint32_t>(x * 30 << 16 | y * 30);
  return image;
}

TEST(StretchFace, CopiesItsCornersAndSpreadsTheMiddle) {
  using Case = std::pair<int, std::string>;
  for (const auto& [side, shades] :
       {Case{0, ""}, Case{1, "210 "}, Case{3, "0 180 210 "}, Case{4, "0 30 180 210 "},
        Case{6, "0 30 75 135 180 210 "}, Case{8, "0 30 60 90 120 150 180 210 "},
        Case{12, "0 30 60 68 83 98 113 128 143 150 180 210 "}}) {
    const Pixels face = skin::stretchFace(gradient(8), side, side);
    std::string across;
    for (int i = 0; i < side; ++i) {
      across += std::to_string(face.at(i, 0) >> 16 & 255) + " ";
      EXPECT_EQ(face.at(0, i) & 255, face.at(i, 0) >> 16 & 255);
    }
    EXPECT_EQ(across, shades);
  }
  for (int side = 0; side < 8; ++side)
    EXPECT_EQ(skin::stretchFace(gradient(side), side - 1, 7).empty(), side < 2) << side;
}

TEST(ButtonFace, EveryStateIsToldFromEveryOther) {
  std::set<std::vector<std::uint32_t>> faces;
  for (int bits = 0; bits < 32; ++bits) {
    const auto has = [bits](int bit) { return (bits & bit) != 0; };
    const skin::ButtonState state{has(1), has(2), has(4), has(8), has(16)};
    faces.insert(skin::drawButtonFace(gradient(8), 40, 20, state, colours).values);
  }
  EXPECT_EQ(faces.size(), 3U * 2U * 2U + 1U);  // a pressed one is not hot, a disabled one is nothing else
}

TEST(ButtonFace, LiesOverTheGroundAndItsRingsFollowItsOutline) {
  Pixels image(16, 16);
  image.values.assign(256, 0xFFFFFFFF);
  for (const std::size_t corner : {0U, 15U, 240U, 255U}) image.values[corner] = 0;
  const Pixels face = skin::drawButtonFace(image, 40, 20, {.focused = true, .isDefault = true}, colours);
  constexpr std::uint32_t white = 0xFFFFFFFF, ring = 0xFF2A65A2, focus = 0xFF6791BD;
  EXPECT_TRUE(face.at(0, 0) == 0xFFD4DEEA && face.at(39, 19) == 0xFFD4DEEA);
  // From the left edge inwards; the corner is rounded off, so the ring there is one pixel further in.
  const std::uint32_t row[]{ring, ring, white, focus, white};
  for (int x = 0; x < 5; ++x) EXPECT_EQ(face.at(x, 10), row[x]) << x;
  EXPECT_TRUE(face.at(20, 3) == focus && face.at(1, 1) == ring && face.at(2, 2) == white);
}

TEST(ButtonFace, TransparentPixelsAreMixedByTheirShare) {
  Pixels image(8, 8);
  for (std::size_t i = 0; i < 64; ++i) image.values[i] = i % 8 < 4 ? 0x0000FF00U : 0xFFFF0000U;
  // The green that transparency hides does not shine through the soft edge.
  const Pixels wide = skin::stretchFace(image, 20, 8);
  std::vector<std::uint32_t> row(wide.values.begin() + 8, wide.values.begin() + 12);
  EXPECT_EQ(row, (std::vector<std::uint32_t>{0x20FF0000, 0x60FF0000, 0x9FFF0000, 0xDFFF0000}));
  image.values[0] = 0x80000000U;
  EXPECT_EQ(skin::drawButtonFace(image, 8, 8, {}, {0xFF8000, 0}).at(0, 0), 0xFF7F4000U);
}

}  // namespace
