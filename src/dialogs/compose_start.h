#pragma once

#include <optional>
#include <string>

#include "store/sms_record.h"

namespace dialogs {

// What a new message begins with.
struct ComposeStart {
  std::string receivers;  // separated by ";"
  std::string text;
  std::optional<store::SmsRecord> draft;  // the message of PDraft that this one takes the place of
};

}  // namespace dialogs
