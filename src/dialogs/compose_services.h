#pragma once

#include <functional>
#include <string>

#include "dialogs/outgoing.h"
#include "phonelink/phone_link.h"
#include "store/folders.h"

namespace dialogs {

// What composing works with; all of it outlives the dialog.
struct ComposeServices {
  phonelink::PhoneLink& link;
  store::Folders& folders;
  // Closes the handset and opens it again. When it answers false it has told the person, and the handset's
  // messages are gone from the window.
  std::function<bool()> reconnect;
  // Reads PSent and PDraft again and shows the selected one anew. Tells what fails, and throws nothing.
  std::function<void()> reloadFiled;
  std::function<void(const std::string&)> showStatus;
  Sending& lastSend;  // what the last Send came to
};

}  // namespace dialogs
