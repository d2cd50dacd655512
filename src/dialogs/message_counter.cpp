#include "dialogs/message_counter.h"

#include <algorithm>

namespace dialogs {

MessageCount countMessage(std::u16string_view text) {
  MessageCount count;
  count.needsUcs2 = std::any_of(text.begin(), text.end(), [](char16_t unit) { return unit > 127; });
  count.charCount = text.size();
  if (!count.needsUcs2 || text.size() <= wideLimit) return count;

  const bool splitsPair = text[wideLimit - 1] >= 0xD800 && text[wideLimit - 1] < 0xDC00;
  count.charCount = splitsPair ? wideLimit - 1 : wideLimit;
  count.isCut = true;
  count.cut = text.substr(0, count.charCount);
  return count;
}

std::string counterText(const MessageCount& count) {
  return std::to_string(count.charCount) + "/" + std::to_string(count.needsUcs2 ? wideLimit : plainLimit);
}

}  // namespace dialogs
