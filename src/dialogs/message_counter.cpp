#include "dialogs/message_counter.h"

#include <algorithm>
#include <utility>

#include "text/unicode.h"

namespace dialogs {
namespace {

std::u16string withoutHalves(std::u16string_view text) {
  std::u16string whole;
  while (!text.empty()) {
    const std::u16string_view character = text::firstCharacter(text);
    const bool half =
        character.size() == 1 && (text::isHighSurrogate(character[0]) || text::isLowSurrogate(character[0]));
    if (!half) whole += character;
    text.remove_prefix(character.size());
  }
  return whole;
}

}  // namespace

MessageCount countMessage(std::u16string_view text) {
  MessageCount count;
  std::u16string left = withoutHalves(text);
  count.needsUcs2 = std::ranges::any_of(left, [](char16_t unit) { return unit > 127; });
  if (count.needsUcs2) left.resize(text::fitting(left, wideLimit).size());
  count.charCount = left.size();
  if (left.size() < text.size()) count.cut = std::move(left);
  return count;
}

std::string counterText(const MessageCount& count) {
  return std::to_string(count.charCount) + "/" + std::to_string(count.needsUcs2 ? wideLimit : plainLimit);
}

}  // namespace dialogs
