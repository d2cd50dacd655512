#include "list/sort_keys.h"

#include <algorithm>
#include <array>
#include <ctime>
#include <limits>

#include "store/leading_number.h"

namespace list {
namespace {

template <class Value>
int order(const Value& a, const Value& b) {
  return a < b ? -1 : (b < a ? 1 : 0);
}

template <class Key, class Value>
int orderOfRows(const Key& a, const Key& b, Value Key::*value) {
  const int byKey = order(a.*value, b.*value);
  return byKey != 0 ? byKey : order(a.slot, b.slot);
}

std::string_view part(std::string_view text, std::size_t begin, std::size_t length) {
  return begin < text.size() ? text.substr(begin, length) : std::string_view();
}

int monthOf(std::string_view name) {
  constexpr std::array<std::string_view, 12> months{"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                                    "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
  const auto found = std::find(months.begin(), months.end(), name);
  return found == months.end() ? 0 : static_cast<int>(found - months.begin());
}

}  // namespace

std::string_view kindOfColumn(int column) {
  if (column >= 0 && column <= 2) return textKind;
  return column == 3 ? dateKind : std::string_view();
}

std::int32_t dateValue(std::string_view text) {
  const int year = store::leadingNumber(part(text, 7, 4));
  if (year < 1971) return 0;
  std::tm date{};
  date.tm_year = year - 1900;
  date.tm_mon = monthOf(part(text, 0, 3));
  date.tm_mday = store::leadingNumber(part(text, 4, 2));
  date.tm_isdst = -1;
  const std::time_t seconds = std::mktime(&date);
  return static_cast<std::int32_t>(
      std::clamp<std::time_t>(seconds, 0, std::numeric_limits<std::int32_t>::max()));
}

int compareKeys(const TextSortKey& a, const TextSortKey& b) {
  return orderOfRows(a, b, &TextSortKey::text);
}
int compareKeys(const DateSortKey& a, const DateSortKey& b) {
  return orderOfRows(a, b, &DateSortKey::value);
}
int compareKeys(const NumberSortKey& a, const NumberSortKey& b) {
  return orderOfRows(a, b, &NumberSortKey::value);
}

}  // namespace list
