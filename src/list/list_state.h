#pragma once

#include <windows.h>

#include <commctrl.h>

#include <string>

#include "framework/handles.h"
#include "store/folder_state.h"

namespace list {

// A drag of rows or of a folder, from its start to the release that ends it. Shared by both panes.
struct DragState {
  framework::UniqueImageList image;
  bool dragging = false;
  HWND source = nullptr;               // the pane in which it began
  HWND target = nullptr;               // the window under the pointer at the last move or at the release
  store::TreeItem dragItem = nullptr;  // the folder that the rows come from
  store::TreeItem dropItem = nullptr;  // the item last hit
  int draggedRow = -1;
  int dropRow = -1;
  POINT dropPoint{};  // screen, where it was released
};

// What the room keeps for the whole process.
struct ListState {
  std::string SortKind;  // of the last sorting: "C", "D" or "N"
  DragState drag;
};

inline ListState& listState() {
  static ListState state;
  return state;
}

}  // namespace list
