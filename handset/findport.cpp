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
#include <string>
#include <string_view>
#include <vector>

#include "handset/at/modem_identity.h"
#include "handset/serial_port.h"
#include "handset/serial_ports.h"
#include "handset/system_clock.h"
#include "text/system.h"

namespace {

using handset::at::PortProblem;

enum ExitCode { found = 0, noneFound = 1, notWritten = 2, badArguments = 64 };

constexpr int baud = 115200;
constexpr std::size_t portWidth = 8;
constexpr std::size_t answerWidth = 34;

// To a console as characters, to a file or a pipe as UTF-8.
void print(const std::wstring& text) {
  const HANDLE output = GetStdHandle(STD_OUTPUT_HANDLE);
  DWORD mode = 0;
  DWORD written = 0;
  if (GetConsoleMode(output, &mode)) {
    WriteConsoleW(output, text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
    return;
  }
  const std::string bytes = text::toUtf8(text);
  WriteFile(output, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
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
  bool wantsPin = false;
};

Examined examine(int port, handset::SystemClock& clock) {
  const handset::at::OpenedPort opened = handset::openSerialPort(port, baud);
  if (!opened.stream) return {false, wordsFor(opened.problem)};
  const auto identity = handset::at::askIdentity(*opened.stream, clock);
  if (!identity) return {false, L"no answer"};
  std::string name = nameOf(*identity);
  if (name.empty()) name = "a modem without a name";
  if (!identity->wanted.empty()) name += ", asks for " + identity->wanted;
  // All of it is ASCII.
  return {true, std::wstring(name.begin(), name.end()), identity->wanted == "SIM PIN"};
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

ExitCode write(int port) {
  const std::wstring path = settingsPath();
  if (WritePrivateProfileStringW(L"port", L"com", std::to_wstring(port).c_str(), path.c_str())) {
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
  bool wantsPin = false;
  printRow(L"Port", L"Answer", L"Device");
  for (const handset::SerialPortEntry& port : ports) {
    const Examined examined = examine(port.number, clock);
    printRow(L"COM" + std::to_wstring(port.number), examined.words, port.description);
    if (examined.answers && !first) first = port.number;
    wantsPin = wantsPin || examined.wantsPin;
  }
  if (!first) {
    print(
        L"\r\nNo phone or modem answered. Is it switched on, connected, and no other program using it?\r\n");
    return noneFound;
  }
  if (wantsPin) {
    print(
        L"\r\nThe SIM asks for its PIN: enter it on the phone, take the request off, or put the line "
        L"pin=1234 with\r\n"
        L"your own PIN below [port] in port.ini. Quillet enters it once, and not again when it was "
        L"refused.\r\n");
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
