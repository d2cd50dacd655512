#include "skin/segment_sort.h"

#include <algorithm>
#include <numeric>

namespace skin {
namespace {

using Rows = std::vector<std::size_t>;

// Merges rows [first, middle) and [middle, last) of `from`, each in order, into the same places of `to`.
template <class GoesAfter>
void merge(const Rows& from, Rows& to, std::size_t first, std::size_t middle, std::size_t last,
           const GoesAfter& goesAfter) {
  std::size_t left = first;
  std::size_t right = middle;
  for (std::size_t place = first; place < last; ++place) {
    const bool takeRight = left == middle || (right != last && goesAfter(from[left], from[right]));
    to[place] = from[takeRight ? right++ : left++];
  }
}

// Mixed kinds of text make no strict weak ordering, on which the library's sorts are not defined. Merging
// moves every row once per pass whatever the answers are, so it ends, and with all rows.
template <class GoesAfter>
void sortSegment(Rows& rows, Rows& spare, std::size_t first, std::size_t last, const GoesAfter& goesAfter) {
  for (std::size_t run = 1; run < last - first; run *= 2) {
    for (std::size_t begin = first; begin < last;) {
      const std::size_t middle = std::min(begin + run, last);
      const std::size_t end = std::min(middle + run, last);
      merge(rows, spare, begin, middle, end, goesAfter);
      begin = end;
    }
    std::copy_n(spare.begin() + static_cast<std::ptrdiff_t>(first), last - first,
                rows.begin() + static_cast<std::ptrdiff_t>(first));
  }
}

}  // namespace

std::vector<std::size_t> sortedOrder(std::span<const std::string> texts,
                                     const std::optional<std::string>& separator, bool ascending,
                                     const CellRules& rules) {
  std::vector<CellValue> cells;
  cells.reserve(texts.size());
  for (const std::string& text : texts) cells.emplace_back(text, rules);
  const auto goesAfter = [&](std::size_t a, std::size_t b) {
    const int order = compareCells(cells[a], cells[b]);
    return ascending ? order > 0 : order < 0;
  };

  Rows rows(texts.size());
  std::iota(rows.begin(), rows.end(), std::size_t{0});
  Rows spare(rows.size());
  for (std::size_t first = 0; first < texts.size();) {
    std::size_t last = first;
    while (last < texts.size() && texts[last] != separator) ++last;
    sortSegment(rows, spare, first, last, goesAfter);
    first = last + 1;
  }
  return rows;
}

}  // namespace skin
