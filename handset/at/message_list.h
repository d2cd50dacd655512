#pragma once

#include <optional>
#include <string>
#include <vector>

#include "handset/at/joined_messages.h"

namespace handset::at {

// The messages in the lines of a listing, in its order. A header without a message behind it and one that
// makes no sense give a message too; lines that belong to none are passed over.
std::vector<StoredPdu> messagesIn(const std::vector<std::string>& lines);

// The message in the answer to the question what lies at one place; nullopt when nothing does.
std::optional<StoredPdu> messageAt(int index, const std::vector<std::string>& lines);

}  // namespace handset::at
