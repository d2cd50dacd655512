#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

// Several numbers in one text, separated by ";".
namespace dialogs {

// The parts in order, nothing trimmed. Empty parts between separators count, an empty rest does not.
std::vector<std::string> splitRecipients(std::string_view text);
// Every number followed by ";".
std::string joinRecipients(std::span<const std::string> numbers);

// Whether a phonebook's number is one number, not two that a separator would part.
bool isSingleNumber(std::string_view number);

// Whether a part can be sent to at all.
bool hasDigit(std::string_view number);

// Whether it looks like one number that a handset can call: at most 16 characters as numbers are written.
bool canBeDialled(std::string_view number);

}  // namespace dialogs
