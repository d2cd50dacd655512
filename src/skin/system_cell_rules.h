#pragma once

#include "skin/cell_comparison.h"

namespace skin {

// Dates as the system reads them in the user's locale, and texts in the order of the system code page's
// characters; texts that the page cannot hold come after all others.
CellRules systemCellRules();

}  // namespace skin
