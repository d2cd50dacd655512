#pragma once

#include <windows.h>

namespace list {

// Where rows can be dropped; points are of the screen.
class DropTarget {
 public:
  virtual ~DropTarget() = default;

  virtual bool isAt(POINT screen) const = 0;
  virtual void dragOver(POINT screen) = 0;
  virtual void dragLeft() = 0;
  // The button was released there; the drag is over.
  virtual void drop(POINT screen) = 0;
};

}  // namespace list
