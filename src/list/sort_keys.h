#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

// What the message list sorts by.
namespace list {

// The kinds of sorting: by text in any letter case, by calendar date, by number.
inline constexpr std::string_view textKind = "C";
inline constexpr std::string_view dateKind = "D";
inline constexpr std::string_view numberKind = "N";

// The kind for a column; empty when there is none.
std::string_view kindOfColumn(int column);

// A row's key knows its record's slot. Rows whose keys are equal stand in the order of their slots, so that
// the parts of one long message stay together.
struct RowKey {
  std::size_t slot = 0;
};
struct TextSortKey : RowKey {
  std::string text;  // bytes that lie in the order of the texts
};
struct DateSortKey : RowKey {
  std::int32_t value = 0;  // seconds as dateValue gives them
};
struct NumberSortKey : RowKey {
  std::int32_t value = 0;
};

// The local date that a text like "Jan 05 2005" begins with, in seconds; an unknown month counts as January,
// and 0 stands for an empty text and for years before 1971.
std::int32_t dateValue(std::string_view text);

// -1, 0 or 1.
int compareKeys(const TextSortKey& a, const TextSortKey& b);
int compareKeys(const DateSortKey& a, const DateSortKey& b);
int compareKeys(const NumberSortKey& a, const NumberSortKey& b);

}  // namespace list
