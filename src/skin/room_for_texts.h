#pragma once

#include <span>

namespace skin {

// Where a control begins and ends along one axis of a dialog, and the length that its text needs (0 = any).
struct Place {
  int from = 0;
  int to = 0;
  int needed = 0;
  bool centred = false;  // grows to both sides
};

// Gives every place the length that it needs. Room is made through the whole dialog, as if it were cut there
// and drawn apart: what begins behind the cut moves, what reaches up to it or over it grows. So what stands
// in line stays in line, and the dialog, which is one of the places, grows with its controls.
void makeRoom(std::span<Place> places);

}  // namespace skin
