#pragma once

#include <windows.h>

#include <span>

namespace framework {

// One row of a context menu: a command, or a menu of its own behind the text; neither = a line between rows.
struct MenuRow {
  UINT command = 0;
  UINT text = 0;  // its string's number, the key behind a tab
  std::span<const MenuRow> popup = {};
};

}  // namespace framework
