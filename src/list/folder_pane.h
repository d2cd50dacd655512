#pragma once

#include <windows.h>

#include <string>

#include "store/folder.h"

namespace list {

// What the list tells the pane with the folders, where rows can be dropped too; points are of the screen.
class FolderPane {
 public:
  virtual ~FolderPane() = default;

  virtual bool isAt(POINT screen) const = 0;
  virtual void dragOver(POINT screen) = 0;
  virtual void dragLeft() = 0;
  // The button was released there; the drag is over.
  virtual void drop(POINT screen) = 0;

  // The folder holds another number of messages now.
  virtual void showCount(store::Folder folder) = 0;
  virtual void showStatus(const std::string& text) = 0;
};

}  // namespace list
