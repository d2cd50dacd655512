#pragma once

#include <array>

// What the list's columns are like for a folder and a pane width.
namespace list {

inline constexpr int contentColumn = 0;
inline constexpr int phoneColumn = 1;
inline constexpr int timeColumn = 2;
inline constexpr int columnCount = 3;

// At 96 dpi.
inline constexpr int phoneWidth = 200;  // of a phone column that was given a new heading
inline constexpr int timeWidth = 100;   // of a time column that is shown again

// Half the pane for the content, a quarter each for phone and time; whole pixels.
constexpr std::array<int, columnCount> columnWidths(int paneWidth) {
  return {paneWidth / 2, paneWidth / 4, paneWidth / 4};
}

}  // namespace list
