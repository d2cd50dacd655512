#include <gtest/gtest.h>

#include <ctime>

#include "list/sort_keys.h"
#include "list/transfer.h"

namespace {

using namespace list;
using Texts = std::vector<std::string>;

TEST(SortKeys, ColumnsHaveTheirKinds) {
  EXPECT_EQ(kindOfColumn(0), "C");
  EXPECT_EQ(kindOfColumn(2), "C");
  EXPECT_EQ(kindOfColumn(3), "D");
  EXPECT_EQ(kindOfColumn(4), "");
  EXPECT_EQ(kindOfColumn(-1), "");
}

TEST(SortKeys, TextsAreComparedInThePageOrAllInUtf8) {
  const TextRules rules{[](std::string_view text) {
                          std::string lower(text);
                          for (char& c : lower)
                            if (c >= 'A' && c <= 'Z') c = static_cast<char>(c + 32);
                          return lower;
                        },
                        [](std::string_view text) -> std::optional<std::string> {
                          if (text == "é") return "\xE9";
                          if (text == "ж") return std::nullopt;
                          return std::string(text);
                        }};
  EXPECT_EQ(textSortKeys(Texts{"B", "é"}, rules), (Texts{"b", "\xE9"}));
  EXPECT_EQ(textSortKeys(Texts{"é", "ж"}, rules), (Texts{"é", "ж"}));
}

TEST(SortKeys, DatesAreLocalMidnightFrom1971On) {
  std::tm first{};
  first.tm_year = 105;
  first.tm_mday = 5;
  first.tm_isdst = -1;
  const auto expected = static_cast<std::int32_t>(std::mktime(&first));
  EXPECT_EQ(dateValue("Jan 05 2005"), expected);
  EXPECT_EQ(dateValue("Jan 05 2005, and more"), expected);
  EXPECT_EQ(dateValue("xyz 05 2005"), expected);
  EXPECT_LT(dateValue("Dec 31 2004"), expected);
  EXPECT_GT(dateValue("Feb 05 2005"), expected + 27 * 86400);
  for (const char* unset : {"", "Jan", "Jan 05", "Jan 05 1970", "Jan 05 x"})
    EXPECT_EQ(dateValue(unset), 0) << unset;
  EXPECT_EQ(dateValue("Jan 05 9999"), 2147483647);
}

TEST(SortKeys, EqualKeysKeepTheirOrder) {
  const auto text = [](const char* words, int row) {
    TextSortKey key;
    key.text = words;
    key.row = row;
    return key;
  };
  EXPECT_LT(compareKeys(text("a", 5), text("b", 1)), 0);
  EXPECT_GT(compareKeys(text("\xE9", 1), text("z", 5)), 0);  // bytes are unsigned
  EXPECT_LT(compareKeys(text("a", 1), text("a", 2)), 0);
  EXPECT_EQ(compareKeys(text("a", 1), text("a", 1)), 0);
  NumberSortKey small;
  small.value = -2147483647;
  NumberSortKey large;
  large.value = 2147483647;
  EXPECT_LT(compareKeys(small, large), 0);
}

store::SmsRecord record(int index) {
  store::SmsRecord made;
  made.Index = index;
  return made;
}

std::vector<int> indices(std::span<const store::SmsRecord> records) {
  std::vector<int> found;
  for (const store::SmsRecord& r : records) found.push_back(r.Index);
  return found;
}

TEST(Transfer, AppendsInTheGivenOrderAndTakesAwayWhatIsMoved) {
  std::vector<store::SmsRecord> source;
  for (int i = 0; i < 6; ++i) source.push_back(record(i));
  const std::vector<store::SmsRecord> target{record(90)};
  const std::vector<std::size_t> slots{5, 2, 1};

  const Transfer moved = planTransfer(source, target, slots, true);
  EXPECT_EQ(indices(moved.target), (std::vector{90, 5, 2, 1}));
  EXPECT_EQ(indices(moved.source), (std::vector{0, 3, 4}));
  const Transfer copied = planTransfer(source, target, slots, false);
  EXPECT_EQ(indices(copied.target), (std::vector{90, 5, 2, 1}));
  // A slot that is not there is nobody's message.
  EXPECT_EQ(indices(planTransfer(source, target, std::vector<std::size_t>{6}, true).target),
            (std::vector{90}));
}

}  // namespace
