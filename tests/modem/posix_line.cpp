#include "posix_line.h"

#include <fcntl.h>
#include <poll.h>
#include <termios.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <memory>
#include <string_view>
#include <thread>

namespace modem_test {
namespace {

using handset::at::ByteStream;
using handset::at::OpenedPort;
using handset::at::PortProblem;

class Terminal : public ByteStream {
 public:
  explicit Terminal(int file) : file_{file} {}
  ~Terminal() override { ::close(file_); }
  Terminal(const Terminal&) = delete;
  Terminal& operator=(const Terminal&) = delete;

  bool write(std::string_view bytes) override {
    while (!bytes.empty()) {
      const ssize_t written = ::write(file_, bytes.data(), bytes.size());
      if (written < 0 && errno == EINTR) continue;
      if (written <= 0) return false;
      bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
  }

  Arrival read(std::string& bytes, int milliseconds) override {
    pollfd waiting{file_, POLLIN, 0};
    const int ready = ::poll(&waiting, 1, milliseconds);
    if (ready == 0 || (ready < 0 && errno == EINTR)) return Arrival::nothing;
    char block[4096];
    const ssize_t got = ready < 0 ? -1 : ::read(file_, block, sizeof block);
    if (got <= 0) return Arrival::gone;
    bytes.append(block, static_cast<std::size_t>(got));
    return Arrival::bytes;
  }

  void discardInput() override { ::tcflush(file_, TCIFLUSH); }

 private:
  int file_;
};

}  // namespace

OpenedPort openTerminal(const std::string& path) {
  const int file = ::open(path.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
  if (file < 0) return {errno == ENOENT ? PortProblem::absent : PortProblem::denied, nullptr};
  auto terminal = std::make_unique<Terminal>(file);
  termios settings{};
  if (::tcgetattr(file, &settings) != 0) return {PortProblem::notSerial, nullptr};
  ::cfmakeraw(&settings);
  if (::tcsetattr(file, TCSANOW, &settings) != 0) return {PortProblem::failed, nullptr};
  terminal->discardInput();
  return {PortProblem::none, std::move(terminal)};
}

std::int64_t PosixClock::milliseconds() {
  using namespace std::chrono;
  return duration_cast<std::chrono::milliseconds>(steady_clock::now().time_since_epoch()).count();
}

void PosixClock::sleep(int milliseconds) {
  std::this_thread::sleep_for(std::chrono::milliseconds{milliseconds});
}

}  // namespace modem_test
