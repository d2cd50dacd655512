#include "app/resource_library.h"

#include <vector>

#include "framework/module.h"
#include "framework/text.h"

namespace app {
namespace {

// As "pt-BR", the one liked most first.
std::vector<std::string> preferredLanguages() {
  ULONG count = 0;
  ULONG size = 0;
  std::vector<std::string> languages;
  if (!GetUserPreferredUILanguages(MUI_LANGUAGE_NAME, &count, nullptr, &size)) return languages;
  std::wstring list(size, L'\0');
  if (!GetUserPreferredUILanguages(MUI_LANGUAGE_NAME, &count, list.data(), &size)) return languages;
  for (const wchar_t* name = list.c_str(); *name; name += wcslen(name) + 1)
    languages.push_back(framework::toUtf8(name));
  return languages;
}

}  // namespace

framework::UniqueModule loadTexts(const std::string& moduleDirectory) {
  const std::string file = "zelSMS.dll";
  if (auto beside = framework::loadResourceLibrary(moduleDirectory + file)) return beside;
  for (const std::string& language : preferredLanguages()) {
    const std::string spoken = language.substr(0, language.find('-'));
    if (spoken == "en") return nullptr;
    for (const std::string& name : {language, spoken})
      if (auto texts = framework::loadResourceLibrary(moduleDirectory + "Languages\\" + name + "\\" + file))
        return texts;
  }
  return nullptr;
}

}  // namespace app
