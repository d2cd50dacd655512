#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "skin/cell_comparison.h"

namespace skin {

// The order into which a sort by the column with these texts brings the rows: element i is the present number
// of the row that comes to place i. Rows whose text is the separator stay where they are and divide the
// others into segments, each sorted by itself; without a separator all rows are one segment. Equal rows keep
// their order in either direction. At most n log n comparisons and no recursion, whatever the texts.
std::vector<std::size_t> sortedOrder(std::span<const std::string> texts,
                                     const std::optional<std::string>& separator, bool ascending,
                                     const CellRules& rules);

}  // namespace skin
