#pragma once

#include <algorithm>
#include <limits>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "handset/at/byte_stream.h"

namespace handset::at {

struct FakeClock : Clock {
  std::int64_t milliseconds() override { return now; }
  void sleep(int milliseconds) override { now += milliseconds; }

  std::int64_t now = 0;
};

constexpr std::size_t never = std::numeric_limits<std::size_t>::max();

// A modem that knows its answers by heart. Commands it does not know give ERROR. Time passes only while
// somebody waits for it.
struct FakeModem {
  // By command; the answers to one are given in turn, the last one over and over. A listing may be said by
  // store ("AT+CMGL=4 SM"). What follows a prompt is answered as "<text>".
  std::map<std::string, std::vector<std::string>> answers;
  bool echo = false;
  std::size_t chunk = never;      // bytes that come at once
  std::size_t cutAt = never;      // also ends a chunk, counted over everything the modem says
  std::size_t goneAfter = never;  // bytes that pass, both ways
  std::size_t insertAt = never;   // line at whose beginning `inserted` comes, counted over everything
  std::string inserted;
  std::string idle;  // comes ten times a second while there is nothing to say
  int slowness = 0;  // milliseconds before each answer

  std::vector<std::string> commands;  // that have come, whole
  std::vector<std::string> texts;     // behind prompts
  std::size_t passed = 0;
  std::size_t said = 0;
  std::size_t lines = 0;

  void take(char byte) {
    if (echo && byte != '\r') output += byte;
    if (byte == '\x1B') {
      input.clear();
      prompted = false;
    } else if (prompted && byte == '\x1A') {
      texts.push_back(std::exchange(input, {}));
      prompted = false;
      answer("<text>");
    } else if (!prompted && byte == '\r') {
      if (echo) output += "\r\n";
      const std::string command = std::exchange(input, {});
      if (!command.empty()) answer(command);
    } else {
      input += byte;
    }
  }

  std::string output;
  FakeClock clock;

 private:
  void answer(const std::string& command) {
    if (command != "<text>") commands.push_back(command);
    if (command.starts_with("AT+CPMS=\"") || command.starts_with("AT+CPBS=\"")) store = command.substr(9, 2);
    auto found = answers.find(command + ' ' + store);
    if (found == answers.end()) found = answers.find(command);
    std::string text = "\r\nERROR\r\n";
    if (found != answers.end()) {
      std::vector<std::string>& turns = found->second;
      text = turns.front();
      if (turns.size() > 1) turns.erase(turns.begin());
    }
    if (slowness > 0) clock.now += slowness;
    prompted = text.find('>') != text.npos;
    for (std::size_t begin = 0; begin < text.size();) {
      const std::size_t end = std::min(text.find("\r\n", begin), text.size() - 2) + 2;
      const bool breakLine = text.compare(begin, 2, "\r\n") == 0;
      if (!breakLine && lines++ == insertAt) output += inserted;
      output.append(text, begin, end - begin);
      begin = end;
    }
  }

  std::string input;
  std::string store;
  bool prompted = false;
};

class FakeLine : public ByteStream {
 public:
  explicit FakeLine(FakeModem& modem) : modem_{modem} {}

  bool write(std::string_view bytes) override {
    for (const char byte : bytes) {
      if (modem_.passed >= modem_.goneAfter) return false;
      ++modem_.passed;
      modem_.take(byte);
    }
    return true;
  }

  Arrival read(std::string& bytes, int milliseconds) override {
    if (modem_.passed >= modem_.goneAfter) return Arrival::gone;
    if (modem_.output.empty() && !modem_.idle.empty() && milliseconds > 0) {
      modem_.clock.now += std::min(milliseconds, 100);
      modem_.output = modem_.idle;
    }
    if (modem_.output.empty()) {
      modem_.clock.now += milliseconds;
      return Arrival::nothing;
    }
    std::size_t count = std::min({modem_.output.size(), modem_.chunk, modem_.goneAfter - modem_.passed});
    if (modem_.cutAt > modem_.said) count = std::min(count, modem_.cutAt - modem_.said);
    bytes.append(modem_.output, 0, count);
    modem_.output.erase(0, count);
    modem_.said += count;
    modem_.passed += count;
    return Arrival::bytes;
  }

  void discardInput() override { modem_.output.clear(); }

 private:
  FakeModem& modem_;
};

}  // namespace handset::at
