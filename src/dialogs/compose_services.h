#pragma once

#include <functional>
#include <string>

#include "phonelink/phone_link.h"
#include "store/folder.h"
#include "store/sms_record.h"
#include "store/store_format.h"
#include "store/write_result.h"

namespace dialogs {

// What composing needs of the rest of the program; the application hands it down. All of it outlives the
// dialog.
struct ComposeServices {
  phonelink::PhoneLink& link;
  // Closes the handset and opens it again. When it answers false it has told the person, and the handset's
  // messages are gone from the window.
  std::function<bool()> reconnect;
  // After an exception the message has not been filed.
  std::function<store::WriteResult(store::Folder folder, const store::SmsRecord& message, store::LineBreaks)>
      file;
  // Reads PSent and PDraft again and shows the selected one anew. Tells what fails, and throws nothing.
  std::function<void()> reloadFiled;
  std::function<std::string(const store::WriteResult&)> describe;  // what went wrong, for the person
  std::function<void(const std::string&)> showStatus;
};

}  // namespace dialogs
