#pragma once

#include <string_view>
#include <vector>

#include "framework/list_view.h"
#include "list/sort_keys.h"

namespace list {

// Sorts the rows of a list by the texts of one column. While it lives, the rows' item data are its keys;
// afterwards each row has its own again.
class ListSorter {
 public:
  ListSorter(framework::CListView& list, int column, std::string_view kind);
  ~ListSorter();
  ListSorter(const ListSorter&) = delete;
  ListSorter& operator=(const ListSorter&) = delete;

  // Ascending; a second sorting by the same column changes nothing.
  void sort();

 private:
  template <class Key>
  void lendKeys(std::vector<Key>& keys);
  template <class Key>
  void sortBy();

  framework::CListView& list_;
  std::vector<TextSortKey> texts_;
  std::vector<DateSortKey> dates_;
  std::vector<NumberSortKey> numbers_;
};

}  // namespace list
