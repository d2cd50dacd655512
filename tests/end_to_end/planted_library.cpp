// A library that somebody has left where it does not belong: to whoever loads it, it is a mark beside it.
#include <windows.h>

extern "C" BOOL WINAPI DllMain(HINSTANCE self, DWORD reason, LPVOID) {
  wchar_t mark[4096];
  const DWORD length = GetModuleFileNameW(self, mark, 4000);
  if (reason == DLL_PROCESS_ATTACH && length != 0) {
    lstrcatW(mark, L".loaded");
    CloseHandle(CreateFileW(mark, GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr));
  }
  return TRUE;
}
