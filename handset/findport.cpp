// Says which serial ports there are and at which of them a phone or modem answers.
//
//   findport            a table of the ports
//   findport --write    the same, and puts the first port that answers into port.ini beside this program
//
// Ends with 0 when a port answered, 1 when none did, 2 when port.ini could not be written, 64 when the
// arguments are no good.
#include <windows.h>

#include <algorithm>
#include <exception>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "handset/modem_identity.h"
#include "handset/port_settings.h"
#include "handset/serial_port.h"
#include "handset/serial_ports.h"
#include "handset/system_clock.h"

namespace {

using handset::at::PortProblem;

enum ExitCode { found = 0, noneFound = 1, notWritten = 2, badArguments = 64 };

constexpr int baud = 115200;
constexpr int askingTime = 3000;  // milliseconds for one port, once it is open
constexpr LONGLONG largestSettings = 1 << 20;
constexpr std::size_t portWidth = 8;
constexpr std::size_t answerWidth = 34;

struct CloseSystemHandle {
  void operator()(HANDLE handle) const { CloseHandle(handle); }
};
using SystemHandle = std::unique_ptr<void, CloseSystemHandle>;

// To a console as characters, to a file or a pipe as UTF-8.
void print(const std::wstring& text) {
  const HANDLE output = GetStdHandle(STD_OUTPUT_HANDLE);
  DWORD mode = 0;
  DWORD written = 0;
  const auto size = static_cast<int>(text.size());
  if (GetConsoleMode(output, &mode)) {
    WriteConsoleW(output, text.data(), static_cast<DWORD>(size), &written, nullptr);
    return;
  }
  std::string bytes(text.size() * 3, '\0');
  const int length = WideCharToMultiByte(CP_UTF8, 0, text.data(), size, bytes.data(),
                                         static_cast<int>(bytes.size()), nullptr, nullptr);
  WriteFile(output, bytes.data(), static_cast<DWORD>(length), &written, nullptr);
}

void printRow(std::wstring port, std::wstring answer, const std::wstring& description) {
  port.resize(std::max(port.size() + 1, portWidth), L' ');
  answer.resize(std::max(answer.size() + 2, answerWidth), L' ');
  print(port + answer + description + L"\r\n");
}

const wchar_t* wordsFor(PortProblem problem) {
  switch (problem) {
    case PortProblem::absent:
      return L"not there";
    case PortProblem::busy:
      return L"in use by another program";
    case PortProblem::denied:
      return L"no permission to open it";
    case PortProblem::notSerial:
      return L"not a serial port";
    default:
      return L"cannot be opened";
  }
}

struct Examined {
  bool answers = false;
  std::wstring words;
};

Examined examine(int port, handset::SystemClock& clock) {
  const handset::at::OpenedPort opened = handset::openSerialPort(port, baud);
  if (!opened.stream) return {false, wordsFor(opened.problem)};
  const auto identity = handset::askIdentity(*opened.stream, clock, askingTime);
  if (!identity) return {false, L"no answer"};
  std::string name = identity->manufacturer;
  if (!name.empty() && !identity->model.empty()) name += ' ';
  name += identity->model;
  if (name.empty()) name = "a modem without a name";
  if (!identity->wanted.empty()) name += ", asks for " + identity->wanted;
  // All of it is ASCII.
  return {true, std::wstring(name.begin(), name.end())};
}

std::wstring settingsPath() {
  for (std::wstring path(MAX_PATH, L'\0');; path.resize(path.size() * 2)) {
    const DWORD length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
    if (length == 0) return {};
    if (length == path.size()) continue;  // cut short
    path.resize(length);
    return path.substr(0, path.rfind(L'\\') + 1) + L"port.ini";
  }
}

// The file's bytes; none when there is no file. Nullopt, and the last error set, when it cannot be read.
std::optional<std::string> readSettings(const std::wstring& path) {
  const HANDLE handle = CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                    OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (handle == INVALID_HANDLE_VALUE)
    return GetLastError() == ERROR_FILE_NOT_FOUND ? std::optional{std::string{}} : std::nullopt;
  const SystemHandle file{handle};
  LARGE_INTEGER size{};
  if (!GetFileSizeEx(handle, &size)) return std::nullopt;
  if (size.QuadPart > largestSettings) {
    SetLastError(ERROR_FILE_TOO_LARGE);
    return std::nullopt;
  }
  std::string bytes(static_cast<std::size_t>(size.QuadPart), '\0');
  DWORD got = 0;
  if (!ReadFile(handle, bytes.data(), static_cast<DWORD>(bytes.size()), &got, nullptr)) return std::nullopt;
  bytes.resize(got);
  return bytes;
}

bool writeWhole(const std::wstring& path, std::string_view bytes) {
  const HANDLE handle =
      CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (handle == INVALID_HANDLE_VALUE) return false;
  const SystemHandle file{handle};
  DWORD written = 0;
  if (!WriteFile(handle, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr)) return false;
  if (written != bytes.size()) SetLastError(ERROR_DISK_FULL);
  return written == bytes.size() && FlushFileBuffers(handle);
}

// Whole or not at all: the new file takes the old one's place in one step.
bool saveSettings(const std::wstring& path, int port) {
  const std::optional<std::string> settings = readSettings(path);
  if (!settings) return false;
  const std::wstring fresh = path + L".new";
  if (writeWhole(fresh, handset::withPort(*settings, port)) &&
      MoveFileExW(fresh.c_str(), path.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH))
    return true;
  const DWORD error = GetLastError();
  DeleteFileW(fresh.c_str());
  SetLastError(error);
  return false;
}

ExitCode write(int port) {
  const std::wstring path = settingsPath();
  if (saveSettings(path, port)) {
    print(L"\r\nWritten to port.ini: com=" + std::to_wstring(port) + L"\r\n");
    return found;
  }
  print(L"\r\nCould not write " + path + L": error " + std::to_wstring(GetLastError()) + L"\r\n");
  return notWritten;
}

ExitCode run(bool writes) {
  const std::vector<handset::SerialPortEntry> ports = handset::serialPorts();
  if (ports.empty()) {
    print(L"This computer has no serial ports.\r\n");
    return noneFound;
  }
  handset::SystemClock clock;
  int first = 0;
  printRow(L"Port", L"Answer", L"Device");
  for (const handset::SerialPortEntry& port : ports) {
    const Examined examined = examine(port.number, clock);
    printRow(L"COM" + std::to_wstring(port.number), examined.words, port.description);
    if (examined.answers && !first) first = port.number;
  }
  if (!first) {
    print(
        L"\r\nNo phone or modem answered. Is it switched on, connected, and no other program using it?\r\n");
    return noneFound;
  }
  if (writes) return write(first);
  print(L"\r\nPut com=" + std::to_wstring(first) + L" into port.ini, or let \"findport --write\" do it.\r\n");
  return found;
}

}  // namespace

int wmain(int count, wchar_t** arguments) {
  const bool writes = count == 2 && std::wstring_view{arguments[1]} == L"--write";
  if (count > 1 && !writes) {
    print(
        L"findport            shows the serial ports and which phone or modem answers\r\n"
        L"findport --write    also puts the first one that answers into port.ini\r\n");
    return badArguments;
  }
  try {
    return run(writes);
  } catch (const std::exception&) {
    print(L"Out of memory.\r\n");
    return noneFound;
  }
}
