#pragma once

#include <optional>

#include "store/folder.h"

namespace phonelink {

// What a refresh acts on. The application implements it with the tree, the list and the connection.
class RefreshTarget {
 public:
  virtual ~RefreshTarget() = default;

  virtual void freeTable(store::Folder folder) = 0;
  virtual void emptyList() = 0;
  virtual void closeHandset() = 0;
  // Opens the handset again; has told the person when it answers false.
  virtual bool connect() = 0;
  // Reads the folder from its source and renews its label.
  virtual void reload(store::Folder folder) = 0;
  virtual std::optional<store::Folder> selectedFolder() const = 0;
  // Shows the folder's records in the list, which is empty; nothing to show when there are none.
  virtual void show(store::Folder folder) = 0;
};

// Reads all five folders again, the handset through a new connection, and shows the selected one. False when
// the handset could not be opened: tables and list are then empty and the labels as they were.
bool refreshAll(RefreshTarget& target);

}  // namespace phonelink
