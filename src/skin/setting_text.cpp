#include "skin/setting_text.h"

#include <algorithm>
#include <charconv>

#include "text/plain.h"

namespace skin {
namespace {

using text::equalInAnyCase;
using text::trimmed;

std::string_view unquoted(std::string_view value) {
  const bool quoted =
      value.size() >= 2 && value.front() == value.back() && (value.front() == '"' || value.front() == '\'');
  return quoted ? value.substr(1, value.size() - 2) : value;
}

}  // namespace

std::optional<std::string> findSetting(std::string_view text, std::string_view section,
                                       std::string_view key) {
  bool inSection = false;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    const std::string_view line = trimmed(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
    if (line.empty() || line.front() == ';') continue;
    if (line.front() == '[') {
      inSection = equalInAnyCase(trimmed(line.substr(1, line.find(']') - 1)), section);
      continue;
    }
    const std::size_t equals = line.find('=');
    if (!inSection || equals == std::string_view::npos) continue;
    if (equalInAnyCase(trimmed(line.substr(0, equals)), key))
      return std::string(unquoted(trimmed(line.substr(equals + 1))));
  }
  return std::nullopt;
}

std::optional<std::array<int, 4>> parseRect(std::string_view value) {
  std::array<int, 4> rect{};
  for (std::size_t i = 0; i < rect.size(); ++i) {
    const std::size_t comma = value.find(',');
    const bool last = i + 1 == rect.size();
    if ((comma == std::string_view::npos) != last) return std::nullopt;
    const std::string_view field = trimmed(value.substr(0, comma));
    const auto [end, error] = std::from_chars(field.data(), field.data() + field.size(), rect[i]);
    if (error != std::errc{} || end != field.data() + field.size()) return std::nullopt;
    if (!last) value.remove_prefix(comma + 1);
  }
  return rect;
}

}  // namespace skin
