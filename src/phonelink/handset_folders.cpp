#include "phonelink/handset_folders.h"

#include <utility>

#include "phonelink/entry_layouts.h"

namespace phonelink {

bool belongsTo(store::Folder folder, std::uint16_t status) {
  if (folder == store::Folder::MInbox) return status == statusReceivedRead || status == statusReceivedUnread;
  return folder == store::Folder::MOutbox && status == statusOutgoing;
}

store::FolderTable readHandsetFolder(PhoneLink& link, store::Folder folder) {
  store::FolderTable table(folder == store::Folder::MInbox ? link.receivedMessages()
                                                           : link.outgoingMessages());
  for (HandsetMessage& message : link.handsetMessages())
    if (belongsTo(folder, message.status)) table.append(std::move(message.record));
  return table;
}

}  // namespace phonelink
