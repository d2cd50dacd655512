// Reading a message, writing one, and what became of the last.
#include <optional>
#include <utility>

#include "app/quillet_app.h"
#include "dialogs/new_message_dialog.h"
#include "dialogs/outcome_dialog.h"
#include "dialogs/reader_dialog.h"
#include "dialogs/recipients.h"
#include "resources/resource_ids.h"

namespace app {

dialogs::ComposeServices CQuilletApp::composeServices() {
  return {link_,
          frame()->tree().folders(),
          [this] { return reconnectForSending(); },
          [this] { frame()->tree().reloadFiled(); },
          [this](const std::string& text) { showStatus(text); },
          lastSend_};
}

void CQuilletApp::compose(dialogs::ComposeStart start) {
  dialogs::NewMessageDialog dialog(composeServices(), std::move(start));
  dialog.doModal(frame()->handle());
}

void CQuilletApp::onLastSend() {
  dialogs::OutcomeDialog dialog(composeServices());
  dialog.doModal(frame()->handle());
}

void CQuilletApp::openReader(int slot) {
  const auto folder = frame()->list().shownFolder();
  if (!folder) return;
  dialogs::ReaderDialog dialog(frame()->tree().folders()[*folder].records(), slot);
  const INT_PTR command = dialog.doModal(frame()->handle());
  answer(static_cast<UINT>(command), *folder, static_cast<std::size_t>(dialog.position()));
}

void CQuilletApp::answer(UINT command, store::Folder folder, std::size_t slot) {
  const store::FolderTable& table = frame()->tree().folders()[folder];
  if (slot >= table.size()) return;
  const store::SmsRecord& message = table[slot];
  if (command == ID_REPLY) compose({message.Phone, {}, {}});
  if (command == ID_FORWARD) compose({{}, message.Content, {}});
  if (command == ID_EDIT_AS_NEW)
    compose({message.Phone, message.Content,
             folder == store::Folder::PDraft ? std::optional(message) : std::nullopt});
}

bool CQuilletApp::canReply() const {
  if (!canAnswer()) return false;
  const store::FolderTable& table = frame()->tree().folders()[*frame()->list().shownFolder()];
  return dialogs::canBeDialled(table[frame()->list().selectedSlots().front()].Phone);
}

}  // namespace app
