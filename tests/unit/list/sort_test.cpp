#include <gtest/gtest.h>

#include <ctime>
#include <tuple>

#include "list/list_sorter.h"
#include "list/sort_keys.h"

namespace {

using namespace list;
using Slots = std::vector<std::size_t>;

TEST(ListSorter, SortsSlotsByTheKindOfTheColumn) {
  using Case = std::tuple<int, std::vector<std::string>, Slots, const char*>;
  for (const auto& [column, texts, sorted, expected] :
       {Case{0,
             {"b", "\xE9", "a", "", "b"},
             {3, 2, 0, 4, 1},
             "C"},  // equal keys by their slots, bytes unsigned
        Case{2, {"10", "9", "10"}, {0, 2, 1}, "C"},
        Case{3, {"Feb 01 2005", "", "Jan 31 2005", "Jan 31 2005"}, {1, 2, 3, 0}, "D"},
        Case{4, {"b", "c", "a"}, {0, 1, 2}, "N"}, Case{-1, {"b", "c", "a"}, {0, 1, 2}, "N"}}) {
    std::string kind = "before";
    Slots slots(texts.size());
    for (std::size_t i = 0; i < slots.size(); ++i) slots[i] = slots.size() - 1 - i;
    EXPECT_EQ(
        ListSorter(kind, kindOfColumn(column))
            .sorted(
                slots, [&](std::size_t slot) { return texts[slot]; }, [](std::string text) { return text; }),
        sorted);
    EXPECT_EQ(kind, expected);
  }
  std::string kind;
  EXPECT_EQ(ListSorter(kind, numberKind)
                .sorted(Slots{0, 1, 2}, [](std::size_t slot) { return "-" + std::to_string(slot); }, {}),
            (Slots{2, 1, 0}));
}

TEST(SortKeys, DatesAreLocalMidnightFrom1971On) {
  std::tm first{};
  std::tie(first.tm_year, first.tm_mday, first.tm_isdst) = std::tuple{105, 5, -1};
  const auto expected = static_cast<std::int32_t>(std::mktime(&first));
  for (const char* same : {"Jan 05 2005", "Jan 05 2005, and more", "xyz 05 2005"})
    EXPECT_EQ(dateValue(same), expected) << same;
  EXPECT_GT(dateValue("Feb 05 2005"), expected + 27 * 86400);
  for (const char* unset : {"", "Jan", "Jan 05", "Jan 05 1970", "Jan 05 x"})
    EXPECT_EQ(dateValue(unset), 0) << unset;
  EXPECT_NE(dateValue("Jan 02 1971"), 0);
  EXPECT_EQ(dateValue("Jan 05 9999"), 2147483647);
}

}  // namespace
