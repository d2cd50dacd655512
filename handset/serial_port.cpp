#include "handset/serial_port.h"

#include <windows.h>

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace handset {
namespace {

using at::ByteStream;
using at::OpenedPort;
using at::PortProblem;

constexpr DWORD writeTime = 2000;   // milliseconds for a driver to take what is written
constexpr DWORD driverSlack = 200;  // beyond its own timeout, before a driver's operation is cancelled
constexpr DWORD queuedTime = 200;   // for bytes that have come already
constexpr DWORD driverBuffer = 1U << 16U;

struct CloseSystemHandle {
  void operator()(HANDLE handle) const { CloseHandle(handle); }
};
using SystemHandle = std::unique_ptr<void, CloseSystemHandle>;

// A read ends when it has all that it asked for or when `readWait` milliseconds are over.
COMMTIMEOUTS timeouts(DWORD readWait) {
  COMMTIMEOUTS times{};
  times.ReadTotalTimeoutConstant = readWait;
  times.WriteTotalTimeoutConstant = writeTime;
  return times;
}

// An open COM port. Its operations are overlapped so that a driver that keeps no timeouts can be left behind.
class SerialPort : public ByteStream {
 public:
  SerialPort(SystemHandle port, SystemHandle event) : port_{std::move(port)}, event_{std::move(event)} {}

  bool write(std::string_view bytes) override {
    const auto size = static_cast<DWORD>(bytes.size());
    return transfer(writeTime, [&](OVERLAPPED& operation) {
             return WriteFile(port_.get(), bytes.data(), size, nullptr, &operation);
           }) == size;
  }

  // Drivers differ in what ends a wait for several bytes, but all know to wait for one.
  Arrival read(std::string& bytes, int milliseconds) override {
    const std::size_t before = bytes.size();
    std::optional<DWORD> waiting = queued();
    if (waiting == 0U && milliseconds > 0)
      waiting = take(bytes, 1, static_cast<DWORD>(milliseconds)) ? queued() : std::nullopt;
    if (waiting.value_or(0) > 0 && !take(bytes, *waiting, queuedTime)) waiting.reset();
    if (bytes.size() > before) return Arrival::bytes;
    return waiting ? Arrival::nothing : Arrival::gone;
  }

 private:
  // Appends up to `most` bytes, all that come within `wait` milliseconds; false when reading fails.
  bool take(std::string& bytes, DWORD most, DWORD wait) {
    if (wait != readWait_) {
      COMMTIMEOUTS times = timeouts(wait);
      if (!SetCommTimeouts(port_.get(), &times)) return false;
      readWait_ = wait;
    }
    const std::size_t before = bytes.size();
    bytes.resize(before + most);
    const std::optional<DWORD> got = transfer(wait, [&](OVERLAPPED& operation) {
      return ReadFile(port_.get(), bytes.data() + before, most, nullptr, &operation);
    });
    bytes.resize(before + got.value_or(0));
    return got.has_value();
  }

  // Starts an operation and waits for its end; the bytes it moved, 0 when the time was over, nullopt when it
  // failed.
  template <typename Start>
  std::optional<DWORD> transfer(DWORD milliseconds, Start start) {
    OVERLAPPED operation{};
    operation.hEvent = event_.get();
    if (!start(operation)) {
      if (GetLastError() == ERROR_TIMEOUT) return 0;
      if (GetLastError() != ERROR_IO_PENDING) return std::nullopt;
      if (WaitForSingleObject(event_.get(), milliseconds + driverSlack) != WAIT_OBJECT_0)
        CancelIoEx(port_.get(), &operation);
    }
    // The system writes into `operation` and the buffer until the end, so that is always waited for.
    DWORD moved = 0;
    if (GetOverlappedResult(port_.get(), &operation, &moved, TRUE)) return moved;
    const DWORD error = GetLastError();
    if (error == ERROR_TIMEOUT || error == ERROR_OPERATION_ABORTED) return moved;
    return std::nullopt;
  }

  // Bytes that have come; nullopt when the device was pulled out, which may go on giving reads of no bytes.
  std::optional<DWORD> queued() const {
    DWORD errors = 0;
    COMSTAT status{};
    if (!ClearCommError(port_.get(), &errors, &status)) return std::nullopt;
    return status.cbInQue;
  }

  SystemHandle port_;
  SystemHandle event_;
  DWORD readWait_ = MAXDWORD;  // of the timeouts in force
};

HANDLE openDevice(const std::wstring& path, DWORD access) {
  return CreateFileW(path.c_str(), access, 0, nullptr, OPEN_EXISTING, FILE_FLAG_OVERLAPPED, nullptr);
}

PortProblem problemOf(DWORD error, const std::wstring& path) {
  switch (error) {
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
    case ERROR_DEV_NOT_EXIST:
      return PortProblem::absent;
    case ERROR_SHARING_VIOLATION:
    case ERROR_BUSY:
    case ERROR_DEVICE_IN_USE:
      return PortProblem::busy;
    case ERROR_ACCESS_DENIED:
      break;
    default:
      return PortProblem::failed;
  }
  // Drivers say the same of a port that another program has open and of one that this user may not touch.
  // Asked for no rights, only the first still refuses.
  const HANDLE device = openDevice(path, 0);
  if (device == INVALID_HANDLE_VALUE) return PortProblem::busy;
  CloseHandle(device);
  return PortProblem::denied;
}

PortProblem configure(HANDLE port, int baud) {
  DCB settings{};
  settings.DCBlength = sizeof settings;
  const DWORD type = GetFileType(port);
  // The name of a port may outlive the device behind it.
  if (type == FILE_TYPE_UNKNOWN) return PortProblem::absent;
  if (type != FILE_TYPE_CHAR || !GetCommState(port, &settings)) return PortProblem::notSerial;
  settings.BaudRate = static_cast<DWORD>(baud);
  settings.ByteSize = 8;
  settings.Parity = NOPARITY;
  settings.StopBits = ONESTOPBIT;
  settings.fBinary = TRUE;
  settings.fParity = FALSE;
  // Phones leave these lines as they like; waiting for one would hang.
  settings.fOutxCtsFlow = FALSE;
  settings.fOutxDsrFlow = FALSE;
  settings.fDsrSensitivity = FALSE;
  settings.fOutX = FALSE;
  settings.fInX = FALSE;
  settings.fErrorChar = FALSE;
  settings.fNull = FALSE;
  settings.fAbortOnError = FALSE;
  settings.fDtrControl = DTR_CONTROL_ENABLE;
  settings.fRtsControl = RTS_CONTROL_ENABLE;
  COMMTIMEOUTS times = timeouts(queuedTime);
  if (!SetCommState(port, &settings) || !SetCommTimeouts(port, &times)) return PortProblem::failed;
  // A driver may lack any of these; the port works all the same.
  SetupComm(port, driverBuffer, driverBuffer);
  EscapeCommFunction(port, SETDTR);
  EscapeCommFunction(port, SETRTS);
  PurgeComm(port, PURGE_RXABORT | PURGE_RXCLEAR | PURGE_TXABORT | PURGE_TXCLEAR);
  return PortProblem::none;
}

}  // namespace

OpenedPort openSerialPort(int port, int baud) {
  if (port < 1) return {PortProblem::absent, nullptr};
  // Without this prefix only COM1 to COM9 are names of devices.
  const std::wstring path = L"\\\\.\\COM" + std::to_wstring(port);
  const HANDLE handle = openDevice(path, GENERIC_READ | GENERIC_WRITE);
  if (handle == INVALID_HANDLE_VALUE) return {problemOf(GetLastError(), path), nullptr};
  SystemHandle device{handle};
  if (const PortProblem problem = configure(handle, baud); problem != PortProblem::none)
    return {problem, nullptr};
  SystemHandle event{CreateEventW(nullptr, TRUE, FALSE, nullptr)};
  if (!event) return {PortProblem::failed, nullptr};
  return {PortProblem::none, std::make_unique<SerialPort>(std::move(device), std::move(event))};
}

}  // namespace handset
