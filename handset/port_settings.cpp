#include "handset/port_settings.h"

#include <algorithm>
#include <cstddef>
#include <optional>

namespace handset {
namespace {

constexpr std::string_view lineEnd = "\r\n";
constexpr std::string_view utf8Mark = "\xEF\xBB\xBF";

std::string_view trimmed(std::string_view text) {
  constexpr std::string_view blanks = " \t\r\f\v";
  const std::size_t begin = text.find_first_not_of(blanks);
  if (begin == std::string_view::npos) return {};
  return text.substr(begin, text.find_last_not_of(blanks) - begin + 1);
}

bool equalInAnyCase(std::string_view text, std::string_view small) {
  return std::equal(text.begin(), text.end(), small.begin(), small.end(), [](char a, char b) {
    return (a >= 'A' && a <= 'Z' ? static_cast<char>(a - 'A' + 'a') : a) == b;
  });
}

bool isSection(std::string_view line) {
  return line.starts_with('[') && equalInAnyCase(trimmed(line.substr(1, line.find(']') - 1)), "port");
}

bool isPort(std::string_view line) {
  const std::size_t equals = line.find('=');
  return !line.starts_with(';') && equals != std::string_view::npos &&
         equalInAnyCase(trimmed(line.substr(0, equals)), "com");
}

}  // namespace

std::string withPort(std::string_view settings, int port) {
  const std::string key = "com=" + std::to_string(port);
  const std::size_t begin = settings.starts_with(utf8Mark) ? utf8Mark.size() : 0;
  std::optional<std::size_t> insertAt;  // right behind the section's own line
  bool inSection = false;
  for (std::size_t at = begin; at < settings.size();) {
    const std::size_t end = std::min(settings.find('\n', at), settings.size());
    const std::string_view line = trimmed(settings.substr(at, end - at));
    if (line.starts_with('[')) {
      inSection = isSection(line);
      if (inSection && !insertAt && end < settings.size()) insertAt = end + 1;
    } else if (inSection && isPort(line)) {
      const std::string_view rest = settings.substr(end > at && settings[end - 1] == '\r' ? end - 1 : end);
      return std::string{settings.substr(0, at)} + key + std::string{rest};
    }
    at = end + 1;
  }
  if (insertAt)
    return std::string{settings.substr(0, *insertAt)} + key + std::string{lineEnd} +
           std::string{settings.substr(*insertAt)};

  std::string text{settings};
  if (text.size() > begin && !text.ends_with('\n')) text += lineEnd;
  // The section may stand on the last line, without an end.
  if (!inSection) text += "[port]" + std::string{lineEnd};
  return text + key + std::string{lineEnd};
}

}  // namespace handset
