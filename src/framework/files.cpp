#include "framework/files.h"

#include "framework/handles.h"
#include "framework/text.h"

namespace framework {
namespace {

constexpr LONGLONG largest = 64LL << 20;

}  // namespace

bool readFile(const std::string& path, std::string& bytes) {
  const HANDLE opened = CreateFileW(toWide(path).c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                    nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (opened == INVALID_HANDLE_VALUE) return false;
  const UniqueHandle file(opened);
  LARGE_INTEGER size{};
  if (!GetFileSizeEx(opened, &size) || size.QuadPart > largest) return false;
  bytes.resize(static_cast<std::size_t>(size.QuadPart));
  DWORD read = 0;
  if (!ReadFile(opened, bytes.data(), static_cast<DWORD>(bytes.size()), &read, nullptr)) return false;
  bytes.resize(read);
  return true;
}

}  // namespace framework
