#include "handset/port_file.h"

#include <windows.h>

#include "handset/windows_environment.h"

namespace handset {
namespace {

constexpr wchar_t section[] = L"port";

// Keys and values that anybody looks for here are ASCII.
std::wstring wide(std::string_view text) {
  return {text.begin(), text.end()};
}

std::wstring path() {
  return libraryFolder() + L"port.ini";
}

}  // namespace

std::string PortFile::value(std::string_view key) {
  wchar_t text[64] = L"";
  const DWORD length =
      GetPrivateProfileStringW(section, wide(key).c_str(), L"", text, DWORD{std::size(text)}, path().c_str());
  std::string value;
  for (const wchar_t c : std::wstring_view{text, length}) value += c < 0x80 ? static_cast<char>(c) : '?';
  return value;
}

void PortFile::setValue(std::string_view key, std::string_view value) {
  WritePrivateProfileStringW(section, wide(key).c_str(), value.empty() ? nullptr : wide(value).c_str(),
                             path().c_str());
}

}  // namespace handset
