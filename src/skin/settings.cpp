#include "skin/settings.h"

#include "framework/files.h"
#include "framework/module.h"
#include "skin/setting_text.h"
#include "text/system.h"
#include "text/unicode.h"

namespace skin {
namespace {

std::string settingsText(const std::string& path) {
  std::string bytes;
  if (!framework::readFile(path, bytes)) return {};
  if (bytes.starts_with(text::byteOrderMark)) return bytes.substr(text::byteOrderMark.size());
  return text::SystemCodePage().decode(bytes);
}

}  // namespace

std::string zl_GetModulePath() {
  return framework::moduleDirectory();
}

bool zl_GetSettingString(std::string_view section, std::string_view key, const std::string& path,
                         std::string& value) {
  auto found = findSetting(settingsText(path), section, key);
  if (!found) return false;
  value = std::move(*found);
  return true;
}

bool zl_GetSettingRect(std::string_view section, std::string_view key, const std::string& path, RECT& rect) {
  std::string value;
  if (!zl_GetSettingString(section, key, path, value)) return false;
  const auto parsed = parseRect(value);
  if (!parsed) return false;
  rect = {(*parsed)[0], (*parsed)[1], (*parsed)[2], (*parsed)[3]};
  return true;
}

std::string skinFolder(const std::string& moduleDirectory) {
  return moduleDirectory + "Skin\\Default\\SMS\\";
}

std::string skinFile(const std::string& moduleDirectory) {
  return skinFolder(moduleDirectory) + "skin.ini";
}

}  // namespace skin
