#include "dialogs/message_counter.h"

#include <algorithm>
#include <utility>

#include "text/unicode.h"

namespace dialogs {

MessageCount countMessage(std::u16string_view text) {
  MessageCount count;
  std::u16string whole = text::withoutHalves(text);
  count.needsUcs2 = std::ranges::any_of(whole, [](char16_t unit) { return unit > 127; });
  std::size_t fits = text::fitting(whole, limitOf(count)).size();
  if (fits < whole.size()) {
    if (whole[fits] == u'\n' && whole[fits - 1] == u'\r') --fits;
    whole.resize(fits);
    count.cut = std::move(whole);
  }
  count.charCount = fits;
  return count;
}

std::string counterText(const MessageCount& count) {
  return std::to_string(count.charCount) + "/" + std::to_string(limitOf(count));
}

}  // namespace dialogs
