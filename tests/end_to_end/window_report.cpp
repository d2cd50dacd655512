// Looks at the running program from outside, through nothing but window messages. Answers the requests that
// come on standard input, a line each, until that ends:
//
//   report          the main window, its controls, open dialogs and tooltips, as JSON
//   close           asks the main window to close, as its close button does
//   minimize        the main window, as when all windows of a desktop are
//   look-at FOLDER  from here on the program in that folder is meant, and not any that runs
//   copy BYTES      puts so many bytes that follow the line, UTF-8, on the clipboard
//
// An answer is a line "CODE BYTES" and so many bytes. Code 3: looking failed, the bytes say why.
#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <commctrl.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "control_report.h"
#include "foreign_window.h"
#include "json.h"

namespace {

// The program's path, or as much of its end as matters.
std::wstring programFile = L"\\Quillet.exe";
constexpr std::wstring_view mainTitle = L"Quillet";

// The visible top-level windows of the program.
struct ProgramWindows {
  HWND main = nullptr;
  std::vector<HWND> dialogs;  // message boxes, dialogs, menus
  std::vector<HWND> tooltips;
};

bool belongsToProgram(HWND window) {
  DWORD id = 0;
  GetWindowThreadProcessId(window, &id);
  const HANDLE process = OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, id);
  if (!process) return false;
  wchar_t path[MAX_PATH];
  DWORD length = MAX_PATH;
  const bool known = QueryFullProcessImageNameW(process, 0, path, &length);
  CloseHandle(process);
  return known && std::wstring_view(path, length).ends_with(programFile);
}

BOOL CALLBACK sortWindow(HWND window, LPARAM context) {
  auto& windows = *reinterpret_cast<ProgramWindows*>(context);
  if (!IsWindowVisible(window) || !belongsToProgram(window)) return TRUE;
  const std::wstring name = classOf(window);
  if (name == TOOLTIPS_CLASSW) {
    windows.tooltips.push_back(window);
  } else if (name != L"#32770" && !GetWindow(window, GW_OWNER) && textOf(window) == mainTitle) {
    windows.main = window;
  } else {
    windows.dialogs.push_back(window);
  }
  return TRUE;
}

ProgramWindows findWindows() {
  ProgramWindows windows;
  EnumWindows(sortWindow, reinterpret_cast<LPARAM>(&windows));
  return windows;
}

InputOwners inputOwners(HWND window) {
  GUITHREADINFO info{};
  info.cbSize = sizeof(info);
  GetGUIThreadInfo(GetWindowThreadProcessId(window, nullptr), &info);
  return {info.hwndFocus, info.hwndCapture};
}

std::vector<HWND> descendants(HWND window) {
  std::vector<HWND> found;
  EnumChildWindows(
      window,
      [](HWND child, LPARAM context) -> BOOL {
        reinterpret_cast<std::vector<HWND>*>(context)->push_back(child);
        return TRUE;
      },
      reinterpret_cast<LPARAM>(&found));
  return found;
}

std::string windowReport(HWND window) {
  RECT frame{};
  RECT client{};
  GetWindowRect(window, &frame);
  GetClientRect(window, &client);
  std::vector<std::string> controls;
  for (const HWND child : descendants(window)) controls.push_back(controlReport(child, inputOwners(window)));
  const auto handle = static_cast<long long>(reinterpret_cast<INT_PTR>(window));
  return json::object({{"window", json::number(handle)},
                       {"class", json::text(classOf(window))},
                       {"title", json::text(textOf(window))},
                       {"enabled", json::flag(IsWindowEnabled(window))},
                       {"foreground", json::flag(GetForegroundWindow() == window)},
                       {"minimized", json::flag(IsIconic(window))},
                       {"rect", json::rectangle(frame)},
                       {"client", json::rectangle(onScreen(window, client))},
                       {"controls", json::list(controls)}});
}

std::string report() {
  const ProgramWindows windows = findWindows();
  std::vector<std::string> dialogs;
  std::vector<std::string> tooltips;
  for (const HWND dialog : windows.dialogs) dialogs.push_back(windowReport(dialog));
  for (const HWND tooltip : windows.tooltips) tooltips.push_back(json::text(textOf(tooltip)));
  return json::object({{"main", windows.main ? windowReport(windows.main) : "null"},
                       {"dialogs", json::list(dialogs)},
                       {"tooltips", json::list(tooltips)}});
}

std::wstring wide(const std::string& utf8) {
  const int size = static_cast<int>(utf8.size());
  std::wstring text(static_cast<std::size_t>(MultiByteToWideChar(CP_UTF8, 0, utf8.data(), size, nullptr, 0)),
                    L'\0');
  MultiByteToWideChar(CP_UTF8, 0, utf8.data(), size, text.data(), static_cast<int>(text.size()));
  return text;
}

// False when another program keeps the clipboard.
bool copy(const std::wstring& text) {
  const SIZE_T size = (text.size() + 1) * sizeof(wchar_t);
  const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, size);
  if (!memory) return false;
  std::memcpy(GlobalLock(memory), text.c_str(), size);
  GlobalUnlock(memory);
  // Without an owner the clipboard takes nothing.
  const HWND owner =
      CreateWindowExW(0, L"STATIC", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
  const bool opened = OpenClipboard(owner);
  const bool copied = opened && EmptyClipboard() && SetClipboardData(CF_UNICODETEXT, memory);
  if (!copied) GlobalFree(memory);
  if (opened) CloseClipboard();
  DestroyWindow(owner);
  return copied;
}

struct Answer {
  int code = 0;
  std::string text;
};

Answer answerTo(const std::string& command, const std::string& argument) {
  if (command == "report") return {0, report()};
  if (command == "close") {
    const HWND window = findWindows().main;
    return {window && PostMessageW(window, WM_CLOSE, 0, 0) ? 0 : 1, {}};
  }
  if (command == "minimize") {
    const HWND window = findWindows().main;
    return {window && ShowWindow(window, SW_MINIMIZE) ? 0 : 1, {}};
  }
  if (command == "look-at") {
    programFile = wide(argument) + L"\\Quillet.exe";
    return {};
  }
  if (command == "copy") {
    std::string text(std::strtoul(argument.c_str(), nullptr, 10), '\0');
    text.resize(std::fread(text.data(), 1, text.size(), stdin));
    return {copy(wide(text)) ? 0 : 1, {}};
  }
  return {64, "no such request: " + command};
}

}  // namespace

int main() {
  _setmode(_fileno(stdin), _O_BINARY);
  _setmode(_fileno(stdout), _O_BINARY);
  char line[4096];
  while (std::fgets(line, sizeof(line), stdin)) {
    const std::string request(line, std::strcspn(line, "\n"));
    const std::size_t blank = std::min(request.find(' '), request.size());
    Answer answer;
    try {
      answer = answerTo(request.substr(0, blank), request.substr(std::min(blank + 1, request.size())));
    } catch (const std::exception& problem) {
      answer = {3, problem.what()};
    }
    std::printf("%d %u\n", answer.code, static_cast<unsigned>(answer.text.size()));
    std::fwrite(answer.text.data(), 1, answer.text.size(), stdout);
    std::fflush(stdout);
  }
  return 0;
}
