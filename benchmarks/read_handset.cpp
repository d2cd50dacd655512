// Reads all messages of a handset at a terminal device and prints their texts, a line each: read_handset PATH
#include <fcntl.h>
#include <poll.h>
#include <termios.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <thread>

#include "handset/at/at_handset.h"

namespace {

using namespace handset::at;

class Terminal : public ByteStream {
 public:
  explicit Terminal(int file) : file_{file} {}
  ~Terminal() override { ::close(file_); }
  Terminal(const Terminal&) = delete;
  Terminal& operator=(const Terminal&) = delete;

  bool write(std::string_view bytes) override {
    return ::write(file_, bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size());
  }

  Arrival read(std::string& bytes, int milliseconds) override {
    pollfd waiting{file_, POLLIN, 0};
    if (::poll(&waiting, 1, milliseconds) <= 0) return Arrival::nothing;
    char block[4096];
    const ssize_t got = ::read(file_, block, sizeof block);
    if (got <= 0) return Arrival::gone;
    bytes.append(block, static_cast<std::size_t>(got));
    return Arrival::bytes;
  }

 private:
  int file_;
};

OpenedPort openTerminal(const char* path) {
  const int file = ::open(path, O_RDWR | O_NOCTTY | O_CLOEXEC);
  if (file < 0) return {PortProblem::absent, nullptr};
  auto terminal = std::make_unique<Terminal>(file);
  termios settings{};
  ::tcgetattr(file, &settings);
  ::cfmakeraw(&settings);
  if (::tcsetattr(file, TCSANOW, &settings) != 0) return {PortProblem::notSerial, nullptr};
  return {PortProblem::none, std::move(terminal)};
}

class SteadyClock : public Clock {
 public:
  std::int64_t milliseconds() override {
    using namespace std::chrono;
    return duration_cast<std::chrono::milliseconds>(steady_clock::now().time_since_epoch()).count();
  }
  void sleep(int milliseconds) override {
    std::this_thread::sleep_for(std::chrono::milliseconds{milliseconds});
  }
};

bool print(const handset::Listing<handset::Message>& messages) {
  for (const handset::Message& message : messages.items) std::puts(message.text.c_str());
  return messages.complete;
}

// Nothing is laid down.
struct NoSettings : handset::at::PortSettings {
  std::string value(std::string_view) override { return {}; }
  void setValue(std::string_view, std::string_view) override {}
};

}  // namespace

int main(int count, char** arguments) {
  if (count != 2) return 64;
  SteadyClock clock;
  NoSettings settings;
  AtHandset phone{[arguments](int, int) { return openTerminal(arguments[1]); }, clock, settings};
  const bool ready = phone.open(1, 115200) && phone.init();
  return ready && print(phone.simReceived()) && print(phone.simOutgoing()) && print(phone.phoneMessages())
             ? 0
             : 1;
}
