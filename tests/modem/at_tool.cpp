// The parts that speak to real handsets, for a script to drive. What they say comes out as one JSON value.
//
//   at_tool decode HEX…                        one message, of all its parts: kind, number, time, text
//   at_tool encode NUMBER TEXT REFERENCE       its parts: [[hex, octets], …], or null when it cannot be sent
//   at_tool messages TERMINAL                  what a handset holds: [received, outgoing, phone]
#include <fcntl.h>
#include <poll.h>
#include <termios.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "handset/at/at_handset.h"
#include "handset/at/byte_stream.h"
#include "handset/at/pdu.h"
#include "handset/at/submit.h"

namespace {

using handset::Message;
using handset::at::AtHandset;
using handset::at::ByteStream;
using handset::at::OpenedPort;
using handset::at::PortProblem;

std::string quoted(std::string_view text) {
  std::string result = "\"";
  for (const char c : text) {
    char escape[8];
    if (c == '"' || c == '\\') {
      result += {'\\', c};
    } else if (static_cast<unsigned char>(c) < ' ') {
      std::snprintf(escape, sizeof escape, "\\u%04x", static_cast<unsigned>(c));
      result += escape;
    } else {
      result += c;
    }
  }
  return result + '"';
}

std::string list(const std::vector<std::string>& items) {
  std::string result;
  for (const std::string& item : items) result += (result.empty() ? "" : ", ") + item;
  return "[" + result + "]";
}

std::string json(const Message& m) {
  return list({std::to_string(m.status), std::to_string(m.storageNumber), quoted(m.number), quoted(m.time),
               quoted(m.text)});
}

std::string json(const std::optional<std::vector<Message>>& messages) {
  if (!messages) return "null";
  std::vector<std::string> texts;
  for (const Message& message : *messages) texts.push_back(json(message));
  return list(texts);
}

std::string decode(const std::vector<std::string>& hex) {
  static constexpr const char* kinds[] = {"deliver", "submit", "report", "undecodable"};
  std::vector<handset::at::UserData> parts;
  handset::at::Pdu first;
  for (const std::string& part : hex) {
    handset::at::Pdu pdu = handset::at::decodePdu(part);
    parts.push_back(pdu.data);
    if (parts.size() == 1) first = pdu;
  }
  return "{\"kind\": " + quoted(kinds[static_cast<int>(first.kind)]) +
         ", \"number\": " + quoted(first.number) + ", \"time\": " + quoted(first.time) +
         ", \"text\": " + quoted(handset::at::textOf(parts)) + "}";
}

std::string encode(const std::string& number, const std::string& text, const std::string& reference) {
  const auto parts =
      handset::at::submitPdus(number, text, static_cast<std::uint16_t>(std::atoi(reference.c_str())));
  if (!parts) return "null";
  std::vector<std::string> texts;
  for (const auto& part : *parts) texts.push_back(list({quoted(part.hex), std::to_string(part.octets)}));
  return list(texts);
}

// A terminal device, raw.
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

OpenedPort openTerminal(const std::string& path) {
  const int file = ::open(path.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
  if (file < 0) return {PortProblem::failed, nullptr};
  auto terminal = std::make_unique<Terminal>(file);
  termios settings{};
  if (::tcgetattr(file, &settings) != 0) return {PortProblem::failed, nullptr};
  ::cfmakeraw(&settings);
  if (::tcsetattr(file, TCSANOW, &settings) != 0) return {PortProblem::failed, nullptr};
  terminal->discardInput();
  return {PortProblem::none, std::move(terminal)};
}

class PosixClock : public handset::at::Clock {
 public:
  std::int64_t milliseconds() override {
    using namespace std::chrono;
    return duration_cast<std::chrono::milliseconds>(steady_clock::now().time_since_epoch()).count();
  }
  void sleep(int milliseconds) override {
    std::this_thread::sleep_for(std::chrono::milliseconds{milliseconds});
  }
};

std::string messages(const std::string& terminal) {
  PosixClock clock;
  AtHandset phone{[&terminal](int, int) { return openTerminal(terminal); }, clock};
  if (!phone.open(1, 115200) || !phone.init()) return "null";
  const auto received = phone.simReceived();
  const auto outgoing = phone.simOutgoing();
  return list({json(received), json(outgoing), json(phone.phoneMessages())});
}

std::optional<std::string> run(const std::vector<std::string>& words) {
  if (words.size() < 2) return std::nullopt;
  const std::vector<std::string> rest(words.begin() + 1, words.end());
  if (words[0] == "decode") return decode(rest);
  if (words[0] == "encode" && rest.size() == 3) return encode(rest[0], rest[1], rest[2]);
  if (words[0] == "messages" && rest.size() == 1) return messages(rest[0]);
  return std::nullopt;
}

}  // namespace

int main(int count, char** arguments) {
  const std::optional<std::string> result = run({arguments + 1, arguments + count});
  if (!result) {
    std::fputs("at_tool decode | encode | messages: see its source\n", stderr);
    return 64;
  }
  return std::puts(result->c_str()) < 0 ? 3 : 0;
}
