#include "app/sought_text.h"

#include <windows.h>

#include <algorithm>
#include <utility>

#include "framework/text.h"
#include "store/time_stamp.h"
#include "text/plain.h"

namespace app {

SoughtText::SoughtText(std::string text, bool matchCase)
    : text_(std::move(text)), lowered_(text_), matchCase_(matchCase), ascii_(text::isAscii(text_)) {
  std::ranges::transform(lowered_, lowered_.begin(), text::lowered);
}

bool SoughtText::isIn(const store::SmsRecord& message) const {
  if (text_.empty()) return false;
  return isIn(message.Content) || isIn(message.Phone) || isIn(store::displayTime(message.Time));
}

bool SoughtText::isIn(const std::string& field) const {
  if (matchCase_) return field.find(text_) != field.npos;
  // Most texts are of this kind, and the system's comparison takes its time.
  if (ascii_ && text::isAscii(field)) return !std::ranges::search(field, lowered_, {}, text::lowered).empty();
  const std::wstring where = framework::toWide(field);
  const std::wstring what = framework::toWide(text_);
  return FindNLSStringEx(LOCALE_NAME_USER_DEFAULT, FIND_FROMSTART | NORM_IGNORECASE | NORM_IGNORENONSPACE,
                         where.data(), static_cast<int>(where.size()), what.data(),
                         static_cast<int>(what.size()), nullptr, nullptr, nullptr, 0) >= 0;
}

}  // namespace app
