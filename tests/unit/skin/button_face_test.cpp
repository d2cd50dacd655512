#include "skin/button_face.h"

#include <gtest/gtest.h>

namespace {

using skin::ButtonState;
using skin::Pixels;

constexpr skin::ButtonColours colours{0xD4DEEA, 0x0B4F95};

// White, with one transparent pixel in each corner.
Pixels roundedFace() {
  Pixels image(16, 16);
  for (std::uint32_t& pixel : image.values) pixel = 0xFFFFFFFF;
  for (const int x : {0, 15})
    for (const int y : {0, 15}) image.at(x, y) = 0;
  return image;
}

TEST(ButtonFace, EveryStateIsToldFromEveryOther) {
  const std::pair<const char*, ButtonState> states[] = {
      {"normal", {}},
      {"hot", {.hot = true}},
      {"pressed", {.hot = true, .pressed = true}},
      {"focused", {.focused = true}},
      {"default", {.isDefault = true}},
      {"focused default", {.focused = true, .isDefault = true}},
      {"disabled", {.disabled = true}},
  };
  for (const auto& [name, state] : states)
    for (const auto& [otherName, other] : states) {
      const bool same = skin::drawButtonFace(roundedFace(), 40, 20, state, colours).values ==
                        skin::drawButtonFace(roundedFace(), 40, 20, other, colours).values;
      EXPECT_EQ(same, std::string_view(name) == otherName) << name << ", " << otherName;
    }
}

TEST(ButtonFace, ADisabledButtonShowsNothingElse) {
  const ButtonState all{.hot = true, .pressed = true, .focused = true, .isDefault = true, .disabled = true};
  EXPECT_EQ(skin::drawButtonFace(roundedFace(), 40, 20, all, colours).values,
            skin::drawButtonFace(roundedFace(), 40, 20, {.disabled = true}, colours).values);
}

TEST(ButtonFace, LiesOverTheGroundAndItsRingsFollowItsOutline) {
  const Pixels face =
      skin::drawButtonFace(roundedFace(), 40, 20, {.focused = true, .isDefault = true}, colours);
  for (const std::uint32_t pixel : face.values) ASSERT_EQ(pixel >> 24, 255U);
  for (const int x : {0, 39})
    for (const int y : {0, 19}) EXPECT_EQ(face.at(x, y), 0xFFD4DEEAU) << x << ',' << y;
  // From the left edge inwards: the default ring, a gap, the focus ring, the face.
  const int row = 10;
  EXPECT_NE(face.at(0, row), 0xFFFFFFFFU);
  EXPECT_EQ(face.at(1, row), face.at(0, row));
  EXPECT_EQ(face.at(2, row), 0xFFFFFFFFU);
  EXPECT_NE(face.at(3, row), 0xFFFFFFFFU);
  EXPECT_EQ(face.at(4, row), 0xFFFFFFFFU);
  EXPECT_EQ(face.at(20, 3), face.at(3, row));
  // The corner is rounded off, so the ring there is one pixel further in.
  EXPECT_EQ(face.at(1, 1), face.at(0, row));
  EXPECT_EQ(face.at(2, 2), 0xFFFFFFFFU);
}

TEST(ButtonFace, HalfTransparentPixelsAreMixedWithTheGround) {
  Pixels image(1, 1);
  image.at(0, 0) = 0x80000000U;
  EXPECT_EQ(skin::drawButtonFace(image, 1, 1, {}, {0xFF8000, 0}).at(0, 0), 0xFF7F4000U);
  EXPECT_EQ(skin::mixColours(0x102030, 0xFFFFFF, 0), 0x102030U);
  EXPECT_EQ(skin::mixColours(0x102030, 0xFEDCBA, 256), 0xFEDCBAU);
}

}  // namespace
