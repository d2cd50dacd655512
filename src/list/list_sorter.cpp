#include "list/list_sorter.h"

#include <algorithm>

#include "list/sort_keys.h"
#include "store/leading_number.h"

namespace list {
namespace {

// makeKey(slot) answers the key of a row.
template <class MakeKey>
std::vector<std::size_t> sortedBy(std::span<const std::size_t> slots, MakeKey makeKey) {
  std::vector<decltype(makeKey(0))> keys;
  keys.reserve(slots.size());
  for (const std::size_t slot : slots) keys.push_back(makeKey(slot));
  std::ranges::sort(keys, [](const auto& a, const auto& b) { return compareKeys(a, b) < 0; });
  std::vector<std::size_t> sorted;
  sorted.reserve(slots.size());
  for (const auto& key : keys) sorted.push_back(key.slot);
  return sorted;
}

}  // namespace

ListSorter::ListSorter(std::string& SortKind, std::string_view kind) : sortKind_(SortKind) {
  sortKind_ = kind;
}

std::vector<std::size_t> ListSorter::sorted(std::span<const std::size_t> slots,
                                            const std::function<std::string(std::size_t slot)>& textOf,
                                            const std::function<std::string(std::string text)>& orderKey) {
  if (sortKind_ == textKind)
    return sortedBy(slots, [&](std::size_t slot) { return TextSortKey{{slot}, orderKey(textOf(slot))}; });
  if (sortKind_ == dateKind)
    return sortedBy(slots, [&](std::size_t slot) { return DateSortKey{{slot}, dateValue(textOf(slot))}; });
  const bool byNumber = sortKind_ == numberKind;
  // A column without a kind is sorted by the rows' own numbers.
  sortKind_ = numberKind;
  return sortedBy(slots, [&](std::size_t slot) {
    return NumberSortKey{{slot}, byNumber ? store::leadingNumber(textOf(slot)) : static_cast<int>(slot)};
  });
}

}  // namespace list
