#include "framework/module.h"

#include "framework/text.h"

namespace framework {

std::string moduleDirectory() {
  std::wstring path(MAX_PATH, L'\0');
  for (;;) {
    const DWORD length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
    if (length < path.size()) {
      path.resize(length);
      break;
    }
    path.resize(2 * path.size());
  }
  path.resize(path.find_last_of(L'\\') + 1);
  return toUtf8(path);
}

void restrictLibrarySearch() {
  SetDefaultDllDirectories(LOAD_LIBRARY_SEARCH_APPLICATION_DIR | LOAD_LIBRARY_SEARCH_SYSTEM32);
  SetDllDirectoryW(L"");
}

UniqueModule loadLibrary(const std::string& folder, const std::string& name) {
  const HMODULE own = LoadLibraryExW(toWide(folder + name).c_str(), nullptr,
                                     LOAD_LIBRARY_SEARCH_DLL_LOAD_DIR | LOAD_LIBRARY_SEARCH_SYSTEM32);
  if (own) return UniqueModule(own);
  return loadSystemLibrary(name);
}

UniqueModule loadSystemLibrary(const std::string& name) {
  return UniqueModule(LoadLibraryExW(toWide(name).c_str(), nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32));
}

UniqueModule loadResourceLibrary(const std::string& path) {
  return UniqueModule(LoadLibraryExW(toWide(path).c_str(), nullptr,
                                     LOAD_LIBRARY_AS_DATAFILE | LOAD_LIBRARY_AS_IMAGE_RESOURCE));
}

std::string systemErrorText(std::uint32_t code) {
  wchar_t* text = nullptr;
  const DWORD length = FormatMessageW(
      FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
      code, 0, reinterpret_cast<wchar_t*>(&text), 0, nullptr);
  std::wstring wide(text ? text : L"", length);
  LocalFree(text);
  while (!wide.empty() && (wide.back() == L'\r' || wide.back() == L'\n' || wide.back() == L' '))
    wide.pop_back();
  return wide.empty() ? "error " + std::to_string(code) : toUtf8(wide);
}

}  // namespace framework
