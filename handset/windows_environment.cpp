#include "handset/windows_environment.h"

#include <windows.h>

#include <algorithm>
#include <memory>
#include <vector>

#include "phonelink/entry_layouts.h"
#include "text/unicode.h"

namespace handset {
namespace {

constexpr wchar_t contentName[] = L"handset.txt";
constexpr int minutesPerQuarter = 15;
constexpr std::size_t blockSize = 1U << 16U;

struct CloseFile {
  void operator()(HANDLE file) const { CloseHandle(file); }
};
using FileHandle = std::unique_ptr<void, CloseFile>;

}  // namespace

std::wstring libraryFolder() {
  HMODULE module = nullptr;
  if (!GetModuleHandleExW(
          GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT, contentName,
          &module))
    return {};
  for (std::wstring path(MAX_PATH, L'\0');; path.resize(path.size() * 2)) {
    const DWORD length = GetModuleFileNameW(module, path.data(), static_cast<DWORD>(path.size()));
    if (length == 0) return {};
    if (length == path.size()) continue;  // cut short
    path.resize(length);
    return path.substr(0, path.rfind(L'\\') + 1);
  }
}

std::optional<std::string> WindowsEnvironment::readContent(std::size_t limit) {
  const std::wstring folder = libraryFolder();
  if (folder.empty()) return std::nullopt;
  // An editor may have the file open: that is no reason not to read it.
  const HANDLE handle = CreateFileW((folder + contentName).c_str(), GENERIC_READ,
                                    FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                    OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (handle == INVALID_HANDLE_VALUE) return std::nullopt;
  const FileHandle file{handle};

  std::string bytes;
  std::vector<char> block(blockSize);
  while (bytes.size() < limit) {
    const DWORD wanted = static_cast<DWORD>(std::min(block.size(), limit - bytes.size()));
    DWORD got = 0;
    if (!ReadFile(file.get(), block.data(), wanted, &got, nullptr)) return std::nullopt;
    if (got == 0) break;
    bytes.append(block.data(), got);
  }
  return bytes;
}

LocalTime WindowsEnvironment::now() {
  SYSTEMTIME time{};
  GetLocalTime(&time);
  TIME_ZONE_INFORMATION zone{};
  LONG behind = 0;  // minutes that local time is behind UTC
  switch (GetTimeZoneInformation(&zone)) {
    case TIME_ZONE_ID_DAYLIGHT:
      behind = zone.Bias + zone.DaylightBias;
      break;
    case TIME_ZONE_ID_STANDARD:
      behind = zone.Bias + zone.StandardBias;
      break;
    case TIME_ZONE_ID_UNKNOWN:
      behind = zone.Bias;
      break;
    default:
      break;
  }
  return {time.wYear,
          time.wMonth,
          time.wDay,
          time.wHour,
          time.wMinute,
          time.wSecond,
          static_cast<int>(-behind / minutesPerQuarter)};
}

void WindowsEnvironment::pause(int milliseconds) {
  Sleep(static_cast<DWORD>(milliseconds));
}

void WindowsEnvironment::report(const std::string& line) {
  const std::u16string text = text::utf16FromUtf8("handset.txt: " + line + "\n");
  OutputDebugStringW(reinterpret_cast<const wchar_t*>(text.c_str()));
}

}  // namespace handset
