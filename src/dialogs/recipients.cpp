#include "dialogs/recipients.h"

namespace dialogs {

std::vector<std::string> splitRecipients(std::string_view text) {
  std::vector<std::string> parts;
  for (std::size_t end; (end = text.find(';')) != std::string_view::npos; text.remove_prefix(end + 1))
    parts.emplace_back(text.substr(0, end));
  if (!text.empty()) parts.emplace_back(text);
  return parts;
}

std::string joinRecipients(std::span<const std::string> numbers) {
  std::string text;
  for (const std::string& number : numbers) text += number + ";";
  return text;
}

bool isSingleNumber(std::string_view number) {
  return number.find(';') == std::string_view::npos;
}

bool hasDigit(std::string_view number) {
  return number.find_first_of("0123456789") != std::string_view::npos;
}

bool canBeDialled(std::string_view number) {
  constexpr std::size_t longest = 16;
  // One that did not fit its field ends in dots: it is the beginning of another.
  return hasDigit(number) && number.size() <= longest && !number.ends_with("...") &&
         number.find_first_not_of("0123456789+-.() /*#") == std::string_view::npos;
}

}  // namespace dialogs
