#include <gtest/gtest.h>

#include <tuple>

#include "list/list_sorter.h"
#include "list/sort_keys.h"

namespace {

using namespace list;
using Slots = std::vector<std::size_t>;

TEST(ListSorter, SortsSlotsByTheKindOfTheColumn) {
  using Case = std::tuple<int, std::vector<std::string>, Slots, const char*>;
  for (const auto& [column, texts, sorted, expected] :
       // Equal keys come in the order of their slots; bytes are unsigned.
       {Case{0, {"b", "\xE9", "a", "", "b"}, {3, 2, 0, 4, 1}, "C"},
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
}

}  // namespace
