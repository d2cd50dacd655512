// start_time ROUNDS FRAME-CLASS ROWS PROGRAM [ARGUMENT]: starts the program again and again and prints, for
// the median round, the milliseconds from the start to the list holding ROWS rows with the program ready for
// input, and the private memory it has then (KB).
#include <windows.h>

#include <commctrl.h>
#include <psapi.h>

#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

namespace {

struct Round {
  double milliseconds = 0;
  SIZE_T kilobytes = 0;
};

double now() {
  LARGE_INTEGER count;
  LARGE_INTEGER frequency;
  QueryPerformanceCounter(&count);
  QueryPerformanceFrequency(&frequency);
  return 1000.0 * static_cast<double>(count.QuadPart) / static_cast<double>(frequency.QuadPart);
}

HWND findList(HWND frame) {
  HWND list = nullptr;
  EnumChildWindows(
      frame,
      [](HWND window, LPARAM found) -> BOOL {
        wchar_t name[32];
        GetClassNameW(window, name, 32);
        if (lstrcmpW(name, WC_LISTVIEWW) != 0) return TRUE;
        *reinterpret_cast<HWND*>(found) = window;
        return FALSE;
      },
      reinterpret_cast<LPARAM>(&list));
  return list;
}

bool holds(HWND frame, DWORD_PTR rows) {
  const HWND list = frame ? findList(frame) : nullptr;
  DWORD_PTR count = 0;
  // Answered only once the program is back in its message loop.
  return list && SendMessageTimeoutW(list, LVM_GETITEMCOUNT, 0, 0, SMTO_NORMAL, 20000, &count) &&
         count == rows;
}

bool measure(const wchar_t* frameClass, DWORD_PTR rows, std::wstring command, Round& round) {
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  PROCESS_INFORMATION process{};
  const double begin = now();
  if (!CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                      &process))
    return false;
  HWND frame = nullptr;
  while (!holds(frame = FindWindowW(frameClass, nullptr), rows)) {
    if (now() - begin > 30000 || WaitForSingleObject(process.hProcess, 1) == WAIT_OBJECT_0) return false;
  }
  round.milliseconds = now() - begin;
  PROCESS_MEMORY_COUNTERS memory{};
  memory.cb = sizeof memory;
  K32GetProcessMemoryInfo(process.hProcess, &memory, sizeof memory);
  round.kilobytes = memory.PagefileUsage / 1024;
  PostMessageW(frame, WM_CLOSE, 0, 0);
  WaitForSingleObject(process.hProcess, 10000);
  CloseHandle(process.hThread);
  CloseHandle(process.hProcess);
  return true;
}

}  // namespace

int wmain(int count, wchar_t** arguments) {
  if (count < 5) return 2;
  std::wstring command = L"\"" + std::wstring(arguments[4]) + L"\"";
  if (count > 5) command += L" " + std::wstring(arguments[5]);
  std::vector<Round> rounds(static_cast<std::size_t>(std::max(1, _wtoi(arguments[1]))));
  for (Round& round : rounds)
    if (!measure(arguments[2], static_cast<DWORD_PTR>(_wtoi(arguments[3])), command, round)) return 1;
  const auto middle = rounds.begin() + static_cast<std::ptrdiff_t>(rounds.size() / 2);
  std::nth_element(rounds.begin(), middle, rounds.end(),
                   [](const Round& a, const Round& b) { return a.milliseconds < b.milliseconds; });
  std::printf("%.1f %llu\n", middle->milliseconds, static_cast<unsigned long long>(middle->kilobytes));
  return 0;
}
