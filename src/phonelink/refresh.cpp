#include "phonelink/refresh.h"

namespace phonelink {

bool refreshAll(RefreshTarget& target) {
  for (const store::Folder folder : store::allFolders) target.freeTable(folder);
  target.emptyList();
  target.closeHandset();
  if (!target.connect()) return false;
  for (const store::Folder folder : store::allFolders) target.reload(folder);
  if (const auto selected = target.selectedFolder()) target.show(*selected);
  return true;
}

}  // namespace phonelink
