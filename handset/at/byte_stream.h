#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace handset::at {

// An open line to a modem. Owned by whoever opened it; destroying it closes the line.
class ByteStream {
 public:
  enum class Arrival { bytes, nothing, gone };

  virtual ~ByteStream() = default;

  // All bytes, or false when the line is gone or does not take them.
  virtual bool write(std::string_view bytes) = 0;
  // Waits up to `milliseconds` (0 = not at all) for the first byte and appends what has come by then.
  virtual Arrival read(std::string& bytes, int milliseconds) = 0;
};

// Why a port could not be opened.
enum class PortProblem { none, absent, busy, denied, notSerial, failed };

// `stream` is set if and only if `problem` is none.
struct OpenedPort {
  PortProblem problem = PortProblem::failed;
  std::unique_ptr<ByteStream> stream;
};

// Opens COM port number `port` at `baud` bits per second, 8N1, DTR and RTS raised, input thrown away.
using OpenPort = std::function<OpenedPort(int port, int baud)>;

// Time for deadlines; handed in so that tests do not wait.
class Clock {
 public:
  virtual ~Clock() = default;
  virtual std::int64_t milliseconds() = 0;  // never goes back
  virtual void sleep(int milliseconds) = 0;
};

}  // namespace handset::at
