// start_time ROUNDS ROWS PROGRAM REFERENCE FOLDER: starts both programs by turns again and again, so that
// whatever else the machine does meets both alike. The reference is given ROWS and FOLDER. Prints, for each
// of the two, the fewest milliseconds from the start to the list holding ROWS rows with the program ready for
// input, and the median of the private memory it has then (KB).
#include <windows.h>

#include <commctrl.h>
#include <psapi.h>

#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

#include "stopwatch.h"

namespace {

struct Figures {
  std::vector<double> milliseconds, kilobytes;
};

double kilobytesOf(HANDLE process) {
  PROCESS_MEMORY_COUNTERS memory{};
  memory.cb = sizeof memory;
  K32GetProcessMemoryInfo(process, &memory, sizeof memory);
  return static_cast<double>(memory.PagefileUsage) / 1024;
}

// The list in the frame of either program.
HWND findList() {
  HWND frame = FindWindowW(L"QuilletFrame", nullptr);
  if (!frame) frame = FindWindowW(L"QuilletBare", nullptr);
  HWND list = nullptr;
  const auto look = [](HWND window, LPARAM found) -> BOOL {
    wchar_t name[32];
    GetClassNameW(window, name, 32);
    if (lstrcmpW(name, WC_LISTVIEWW) != 0) return TRUE;
    *reinterpret_cast<HWND*>(found) = window;
    return FALSE;
  };
  if (frame) EnumChildWindows(frame, look, reinterpret_cast<LPARAM>(&list));
  return list;
}

bool holds(HWND list, DWORD_PTR rows) {
  DWORD_PTR count = 0;
  // Answered only once the program is back in its message loop.
  return list && SendMessageTimeoutW(list, LVM_GETITEMCOUNT, 0, 0, SMTO_NORMAL, 20000, &count) &&
         count == rows;
}

bool measure(std::wstring command, DWORD_PTR rows, Figures& figures) {
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  PROCESS_INFORMATION process{};
  const double begin = now();
  if (!CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                      &process))
    return false;
  HWND list = nullptr;
  while (!holds(list = findList(), rows)) {
    if (now() - begin > 60000 || WaitForSingleObject(process.hProcess, 1) == WAIT_OBJECT_0) return false;
  }
  figures.milliseconds.push_back(now() - begin);
  figures.kilobytes.push_back(kilobytesOf(process.hProcess));
  // Again and again: a program that is at work on its handset takes no close.
  bool ended = false;
  for (int i = 0; i < 300 && !ended; ++i) {
    PostMessageW(GetAncestor(list, GA_ROOT), WM_CLOSE, 0, 0);
    ended = WaitForSingleObject(process.hProcess, 100) == WAIT_OBJECT_0;
  }
  CloseHandle(process.hThread);
  CloseHandle(process.hProcess);
  return ended;
}

double median(std::vector<double> values) {
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

void print(const Figures& figures) {
  std::printf("%.1f %.0f\n", *std::min_element(figures.milliseconds.begin(), figures.milliseconds.end()),
              median(figures.kilobytes));
}

}  // namespace

int wmain(int count, wchar_t** arguments) {
  if (count != 6) return 2;
  const DWORD_PTR rows = static_cast<DWORD_PTR>(_wtoi(arguments[2]));
  const std::wstring program = L"\"" + std::wstring(arguments[3]) + L"\"";
  const std::wstring reference =
      L"\"" + std::wstring(arguments[4]) + L"\" " + arguments[2] + L" \"" + arguments[5] + L"\"";
  Figures ofProgram, ofReference;
  for (int round = _wtoi(arguments[1]); round > 0; --round)
    if (!measure(program, rows, ofProgram) || !measure(reference, rows, ofReference)) return 1;
  print(ofProgram);
  print(ofReference);
  return 0;
}
