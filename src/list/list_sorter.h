#pragma once

#include <cstddef>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace list {

// Sorts the rows of a list, given as the slots of their records, by the texts of one column.
class ListSorter {
 public:
  // SortKind: the process-wide one, which becomes `kind`.
  ListSorter(std::string& SortKind, std::string_view kind);

  // Ascending; equal rows come in the order of their slots. textOf answers a slot's text in the column,
  // orderKey bytes that lie in the order of the texts in any letter case.
  std::vector<std::size_t> sorted(std::span<const std::size_t> slots,
                                  const std::function<std::string(std::size_t slot)>& textOf,
                                  const std::function<std::string(std::string text)>& orderKey);

 private:
  std::string& sortKind_;
};

}  // namespace list
