#pragma once

#include <string>
#include <string_view>

#include "fuzz/input.h"
#include "handset/port_settings.h"
#include "skin/setting_text.h"

// What must hold for a settings file of any bytes.
namespace fuzz {

inline std::string withoutMark(std::string text) {
  if (text.starts_with("\xEF\xBB\xBF")) text.erase(0, 3);
  return text;
}

// The input as the number of a port, a section and a key on a line each, and a file.
inline void settings(std::string_view input) {
  Source source{input};
  const int port = static_cast<int>(source.byte());
  const std::string section{source.textUpTo('\n')};
  const std::string key{source.textUpTo('\n')};
  const std::string file{source.rest()};

  const auto value = skin::findSetting(withoutMark(file), section, key);
  if (value) require(file.find(*value) != file.npos);
  if (const auto rect = skin::parseRect(value.value_or(file))) {
    std::string text;
    for (const int edge : *rect) text += (text.empty() ? "" : ", ") + std::to_string(edge);
    require(skin::parseRect(text) == rect);
  }

  // What the port finder writes is what the program reads, and nothing else is another thing than before.
  const std::string changed = handset::withPort(file, port);
  require(skin::findSetting(withoutMark(changed), "port", "com") == std::to_string(port));
  require(handset::withPort(changed, port) == changed);
  for (const auto* other : {"baud", "left"}) {
    for (const auto* place : {"port", "button"})
      require(skin::findSetting(withoutMark(changed), place, other) ==
              skin::findSetting(withoutMark(file), place, other));
  }
}

}  // namespace fuzz
