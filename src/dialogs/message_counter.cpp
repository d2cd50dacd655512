#include "dialogs/message_counter.h"

#include <algorithm>

namespace dialogs {
namespace {

bool isHigh(char16_t unit) {
  return unit >= 0xD800 && unit < 0xDC00;
}
bool isLow(char16_t unit) {
  return unit >= 0xDC00 && unit < 0xE000;
}

std::u16string withoutHalves(std::u16string_view text) {
  std::u16string whole;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool pair = isHigh(text[i]) && i + 1 < text.size() && isLow(text[i + 1]);
    if (pair) whole += text[i++];
    if (pair || (!isHigh(text[i]) && !isLow(text[i]))) whole += text[i];
  }
  return whole;
}

}  // namespace

MessageCount countMessage(std::u16string_view text) {
  MessageCount count;
  count.cut = withoutHalves(text);
  count.needsUcs2 = std::any_of(count.cut.begin(), count.cut.end(), [](char16_t unit) { return unit > 127; });
  if (count.needsUcs2 && count.cut.size() > wideLimit)
    count.cut.resize(isHigh(count.cut[wideLimit - 1]) ? wideLimit - 1 : wideLimit);
  count.charCount = count.cut.size();
  count.isCut = count.cut.size() < text.size();
  if (!count.isCut) count.cut.clear();
  return count;
}

std::string counterText(const MessageCount& count) {
  return std::to_string(count.charCount) + "/" + std::to_string(count.needsUcs2 ? wideLimit : plainLimit);
}

}  // namespace dialogs
