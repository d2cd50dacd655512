#include "skin/segment_sort.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <random>

namespace {

using skin::CellRules;
using skin::sortedOrder;
using Texts = std::vector<std::string>;

Texts sorted(const Texts& texts, bool ascending, const std::optional<std::string>& separator = std::nullopt) {
  Texts result;
  for (const std::size_t row : sortedOrder(texts, separator, ascending, {})) result.push_back(texts.at(row));
  return result;
}

TEST(SortedOrder, SortsByKindInEitherDirection) {
  EXPECT_EQ(sorted({"10", "9", "A"}, true), (Texts{"9", "A", "10"}));
  EXPECT_EQ(sorted({"10", "9", "A"}, false), (Texts{"10", "A", "9"}));
  EXPECT_EQ(sorted({"12.5", "5%"}, true), (Texts{"5%", "12.5"}));
  EXPECT_EQ(sorted({"5%%", "12.5"}, true), (Texts{"12.5", "5%%"}));
  EXPECT_EQ(sorted({"Zoe", "adam", "Bob"}, true), (Texts{"Bob", "Zoe", "adam"}));
  EXPECT_EQ(sorted({}, true), Texts{});
}

TEST(SortedOrder, SortsBetweenSeparatorsOnly) {
  const Texts texts{"3", "1", "2", "--", "--", "5", "4", "--", "0"};
  EXPECT_EQ(sorted(texts, true, "--"), (Texts{"1", "2", "3", "--", "--", "4", "5", "--", "0"}));
  EXPECT_EQ(sorted(texts, false, "--"), (Texts{"3", "2", "1", "--", "--", "5", "4", "--", "0"}));
  EXPECT_EQ(sorted({"--", "b.", "--", "a."}, true), (Texts{"--", "--", "a.", "b."}));
  EXPECT_EQ(sorted({"y", "x", "", "w", "v"}, true, ""), (Texts{"x", "y", "", "v", "w"}));
  EXPECT_EQ(sorted({"--", "2", "1", "--"}, true, "--"), (Texts{"--", "1", "2", "--"}));
}

TEST(SortedOrder, LeavesEqualRowsInTheirOrder) {
  const Texts equal(10000, "same");
  std::vector<std::size_t> unchanged(equal.size());
  std::iota(unchanged.begin(), unchanged.end(), std::size_t{0});
  EXPECT_EQ(sortedOrder(equal, std::nullopt, true, {}), unchanged);
  EXPECT_EQ(sortedOrder(equal, std::nullopt, false, {}), unchanged);
}

TEST(SortedOrder, IsInOrderForEveryLength) {
  std::mt19937 random(11);
  for (std::size_t length = 0; length < 70; ++length) {
    std::vector<unsigned long> numbers(length);
    Texts texts;
    for (unsigned long& number : numbers) texts.push_back(std::to_string(number = random() % 100 * 1000));
    std::sort(numbers.begin(), numbers.end());
    Texts expected;
    for (const unsigned long number : numbers) expected.push_back(std::to_string(number));
    EXPECT_EQ(sorted(texts, true), expected);
  }
}

// Rows of all kinds compare in circles; every row must come out once, after few enough comparisons.
TEST(SortedOrder, EndsWithAllRowsWhateverTheyCompareLike) {
  std::mt19937 random(5);
  const Texts kinds{"10", "9", "A",  "5%",    "12.5", "5%%", "x",   "d",
                    "-1", "",  "--", "1e400", "0x",   "+1",  "\xFF"};
  int dates = 0;
  const CellRules rules{[&](const std::string& text) -> std::optional<double> {
                          ++dates;
                          if (text.size() % 2) return std::nullopt;
                          return static_cast<double>(random() % 3) - 1;
                        },
                        nullptr};
  for (const std::size_t length : {3U, 17U, 1000U, 20000U}) {
    Texts texts;
    while (texts.size() < length) texts.push_back(kinds[random() % kinds.size()]);
    for (const bool ascending : {true, false}) {
      dates = 0;
      auto order = sortedOrder(texts, length == 17 ? std::optional<std::string>("--") : std::nullopt,
                               ascending, rules);
      EXPECT_LE(dates, static_cast<int>(length));  // each text is asked once at most
      std::sort(order.begin(), order.end());
      ASSERT_EQ(order.size(), length);
      for (std::size_t i = 0; i < length; ++i) ASSERT_EQ(order[i], i);
    }
  }
}

}  // namespace
