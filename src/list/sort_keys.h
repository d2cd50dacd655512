#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

// What the message list sorts by.
namespace list {

// The kinds of sorting: by text in any letter case, by calendar date, by number.
inline constexpr std::string_view textKind = "C";
inline constexpr std::string_view dateKind = "D";
inline constexpr std::string_view numberKind = "N";

// The kind for a column; empty when there is none.
std::string_view kindOfColumn(int column);

// A row's key also keeps what the row itself carried. Rows whose keys are equal stay in their order.
struct RowKey {
  std::intptr_t ownData = 0;
  int row = 0;
};
struct TextSortKey : RowKey {
  std::string text;  // as textSortKeys makes it
};
struct DateSortKey : RowKey {
  std::int32_t value = 0;  // seconds as dateValue gives them
};
struct NumberSortKey : RowKey {
  std::int32_t value = 0;
};

// What the system says of letters: lower case, and the bytes of its code page (nothing for a text that the
// page cannot hold).
struct TextRules {
  std::function<std::string(std::string_view)> lower;
  std::function<std::optional<std::string>(std::string_view)> encode;
};

// The texts in lower case and as bytes of the code page, whose order counts; in UTF-8, all of them, when it
// cannot hold them all.
std::vector<std::string> textSortKeys(std::span<const std::string> texts, const TextRules& rules);

// The local date that a text like "Jan 05 2005" begins with, in seconds; an unknown month counts as January,
// and 0 stands for an empty text and for years before 1971.
std::int32_t dateValue(std::string_view text);

// -1, 0 or 1; rows with equal keys by their former places.
int compareKeys(const TextSortKey& a, const TextSortKey& b);
int compareKeys(const DateSortKey& a, const DateSortKey& b);
int compareKeys(const NumberSortKey& a, const NumberSortKey& b);

}  // namespace list
