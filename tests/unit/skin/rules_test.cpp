#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <random>
#include <set>

#include "skin/button_face.h"
#include "skin/nine_slice.h"
#include "skin/room_for_texts.h"
#include "skin/segment_sort.h"
#include "skin/setting_text.h"

namespace {

using skin::CellRules;
using skin::Pixels;
using Texts = std::vector<std::string>;

// "d." and digits: that day; "d?": a date that has no valid value.
std::optional<double> dayOf(const std::string& text) {
  if (text == "d?") return std::numeric_limits<double>::quiet_NaN();
  return text.starts_with("d.") ? std::optional(std::stod(text.substr(2))) : std::nullopt;
}

int compare(const std::string& a, const std::string& b, const CellRules& rules) {
  const int order = skin::compareCells({a, rules}, {b, rules});
  return order < 0 ? -1 : order > 0;
}

TEST(CompareCells, TakesTheFirstWayInWhichBothCanBeRead) {
  const CellRules rules{dayOf, nullptr};
  const std::string nines(100000, '9');
  Texts rows{"9 < 10",      "A < 10",      "bad < fee",   "+886 < 887",   "0 < 9",
             "11 < 1e1",    "9g < F",      "00a = A",     "0XaB = ab",    " \t1f = 1F",
             "+ < 0",       "  < 0",       "0w < 0x",     "0 < 0x0x1",    "12  < 3",
             "5% < 12.5",   "-5 < 3",      "-5 < -3",     "999.5 < 1e3%", "0.25 < .5",
             "99. < 1E+2%", "1.50 = 1.5%", " -5.% = -5%", "1e-999% = 0%", "-1e999% < -1e308%",
             "-9 < -1e0",   "12.5 < 5%%",  "12.5 < 5 %",  "10. < 9e%",    "10.5 < 9,5",
             "-1 < 0x1p3",  "inf < nan",   "10. < 9.2.3", "--1 < -3",     "% < 0.",
             ". < 0.",      " < x",        " = ",         "Zoe < adam",   "zzz < é",
             "d.9 < d.10",  "10 < d.9",    "d.9 = d.9.0"};
  rows.insert(rows.end(),
              {"fffffffffffffff0 < fffffffffffffff1", "fffffffffffffffe < " + nines,
               "ffffffffffffffff = " + nines, std::string(100000, '0') + "7 = 7", nines + ". = 1e999%"});
  for (const std::string& row : rows) {
    const std::size_t sign = row.find_first_of("<=");
    const std::string a = row.substr(0, sign - 1);
    const std::string b = row.substr(sign + 2);
    EXPECT_EQ(compare(a, b, rules), row[sign] == '<' ? -1 : 0) << row.substr(0, 60);
    EXPECT_EQ(compare(b, a, rules), row[sign] == '<' ? 1 : 0) << row.substr(0, 60);
  }
  // A date without a value is less than everything, itself too.
  EXPECT_TRUE(compare("d?", "d.9", rules) < 0 && compare("d.9", "d?", rules) < 0 &&
              compare("d?", "d?", rules) < 0);
  EXPECT_EQ(compare("d.10", "d.9", {}), -1);
  EXPECT_EQ(compare("x1", "x2", {{}, [](const std::string& text) { return text == "x1" ? "b" : "a"; }}), 1);
}

Texts sorted(const Texts& texts, bool ascending, const std::optional<std::string>& separator) {
  Texts result;
  for (const std::size_t row : skin::sortedOrder(texts, separator, ascending, {}))
    result.push_back(texts.at(row));
  return result;
}

TEST(SortedOrder, SortsBetweenSeparatorsInEitherDirection) {
  const Texts parts{"3", "1", "2", "--", "--", "5", "4", "--", "0"};
  EXPECT_EQ(sorted(parts, true, "--"), (Texts{"1", "2", "3", "--", "--", "4", "5", "--", "0"}));
  EXPECT_EQ(sorted(parts, false, "--"), (Texts{"3", "2", "1", "--", "--", "5", "4", "--", "0"}));
  EXPECT_EQ(sorted(parts, true, {}), (Texts{"--", "--", "--", "0", "1", "2", "3", "4", "5"}));
  EXPECT_EQ(sorted({"y", "x", "", "w", "v", ""}, true, ""), (Texts{"x", "y", "", "v", "w", ""}));
  // Equal ones keep their order.
  EXPECT_EQ(sorted({"1", "01", "0", "001"}, true, {}), (Texts{"0", "1", "01", "001"}));
  EXPECT_EQ(sorted({"1", "01", "0", "001"}, false, {}), (Texts{"1", "01", "001", "0"}));
}

// Dates at random compare in circles; every row must come out once, with each text asked once at most.
TEST(SortedOrder, EndsWithAllRowsWhateverTheyCompareLike) {
  std::mt19937 random(5);
  std::size_t asked = 0;
  const CellRules rules{[&](const std::string&) { return ++asked, static_cast<double>(random() % 3); }, {}};
  for (const std::size_t length : {1U, 2U, 3U, 17U, 20000U}) {
    Texts numbers, texts;
    for (std::size_t i = 0; i < length; ++i) {
      numbers.push_back(std::to_string(1000000 + random() % 9000000));  // of one length
      texts.push_back(numbers.back() + "%x");
    }
    EXPECT_TRUE(std::ranges::is_sorted(sorted(numbers, true, {}))) << length;
    const auto order = skin::sortedOrder(texts, {}, false, rules);
    EXPECT_EQ(std::set(order.begin(), order.end()).size(), length);
    EXPECT_LE(std::exchange(asked, 0), length);
  }
}

TEST(FindSetting, ReadsTheFirstMatchInItsSection) {
  const std::string text =
      "image = outside\r\n[Button]\r\n;image = off\r\n  Image =  face.png  \r\nimage=second\r\n[Font]\n"
      "facename=\"Courier New\"\nfontsize=\n[ Spaced ]\nkey='a=b\n[Button]\nlate=''\n[open\nx=1";
  using Case = std::array<std::string, 3>;
  for (const auto& [section, key, value] :
       {Case{"button", "IMAGE", "face.png"}, Case{"Font", "facename", "Courier New"},
        Case{"Font", "fontsize", ""}, Case{"Spaced", "key", "'a=b"}, Case{"Button", "late", ""},
        Case{"Font", "image", "none"}, Case{"", "image", "none"}, Case{"open", "x", "1"}})
    EXPECT_EQ(skin::findSetting(text, section, key).value_or("none"), value) << section << '/' << key;
}

TEST(ParseRect, TakesFourIntegersOnly) {
  EXPECT_EQ(skin::parseRect(" -1 , 0,\t7 ,8 "), (std::array{-1, 0, 7, 8}));
  for (const char* broken : {"", "1,2,3", "1,2,3,4,5", "1,2,3,x", "1,,3,4", "1,2,3,99999999999", "1,2,3,4x"})
    EXPECT_EQ(skin::parseRect(broken), std::nullopt) << broken;
}

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

TEST(ButtonFace, LiesOverTheGroundAndItsRingsFollowItsOutline) {
  Pixels image(16, 16);
  image.values.assign(256, 0xFFFFFFFF);
  for (const std::size_t corner : {0U, 15U, 240U, 255U}) image.values[corner] = 0;
  const Pixels face =
      skin::drawButtonFace(image, 40, 20, {.focused = true, .isDefault = true}, {0xD4DEEA, 0x0B4F95});
  constexpr std::uint32_t white = 0xFFFFFFFF, ring = 0xFF2A65A2, focus = 0xFF6791BD;
  EXPECT_TRUE(face.at(0, 0) == 0xFFD4DEEA && face.at(39, 19) == 0xFFD4DEEA);
  // From the left edge inwards; the corner is rounded off, so the ring there is one pixel further in.
  const std::uint32_t row[]{ring, ring, white, focus, white};
  for (int x = 0; x < 5; ++x) EXPECT_EQ(face.at(x, 10), row[x]) << x;
  EXPECT_TRUE(face.at(20, 3) == focus && face.at(1, 1) == ring && face.at(2, 2) == white);
}

TEST(MakeRoom, MovesWhatStandsBehindAndWidensWhatStandsInLine) {
  const auto roomy = [](std::vector<skin::Place> places) {
    std::string shown;
    skin::makeRoom(places);
    for (const skin::Place& p : places) shown += std::to_string(p.from) + "-" + std::to_string(p.to) + " ";
    return shown;
  };
  // A dialog with two labels, a field beside and one below them, and two buttons.
  EXPECT_EQ(roomy({{0, 100}, {7, 20, 25}, {7, 20, 13}, {24, 60}, {7, 93}, {30, 60, 34}, {64, 93, 29}}),
            "0-116 7-32 7-32 36-76 7-109 42-76 80-109 ");
  // A question over two buttons.
  EXPECT_EQ(roomy({{0, 100}, {20, 80, 66, true}, {25, 45}, {55, 75}}), "0-106 20-86 28-48 58-78 ");
}

}  // namespace
