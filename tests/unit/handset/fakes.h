#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <optional>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "handset/at/byte_stream.h"
#include "handset/at/port_settings.h"
#include "handset/handset.h"
#include "handset/simulated/environment.h"

namespace handset {

// What a simulated handset finds outside, and what it did there.
struct FakeWorld : Environment {
  std::optional<std::string> readContent(std::size_t limit) override {
    return file ? std::optional{file->substr(0, limit)} : std::nullopt;
  }
  LocalTime now() override { return time; }
  void pause(int milliseconds) override { pauses.push_back(milliseconds); }
  void report(const std::string& line) override { reports += line + '\n'; }

  std::optional<std::string> file = "";
  LocalTime time{2026, 11, 21, 17, 15, 4, 4};
  std::vector<int> pauses;
  std::string reports;
};

// Rows of "OUT <= IN <= IN ...": what comes out of a function, as text, and everything that it comes out of.
template <typename Function>
void expectEach(const Function& function, const std::vector<std::string>& rows) {
  for (const std::string& row : rows) {
    const std::size_t arrow = row.find(" <= ");
    for (std::size_t at = arrow, next = arrow; at != row.npos; at = next) {
      next = row.find(" <= ", at + 1);
      EXPECT_EQ(function(row.substr(at + 4, next - at - 4)), row.substr(0, arrow)) << row;
    }
  }
}

inline std::string repeated(std::string_view text, std::size_t times) {
  std::string all;
  while (times-- > 0) all += text;
  return all;
}

struct Shown {
  static std::string of(const Contact& contact) { return contact.number + '=' + contact.name + "; "; }
  static std::string of(const Message& m) {
    const std::string place = std::to_string(m.storageNumber) + '/' + std::to_string(m.status);
    return place + '/' + m.number + '/' + m.time + '/' + m.text + "; ";
  }
  // "none": the list could not be read to its end.
  template <typename Item>
  static std::string of(const Listing<Item>& listing) {
    std::string all = listing.complete ? "" : "none";
    for (const Item& item : listing.items) all += of(item);
    return all;
  }
  // Received, outgoing and the phone's messages, then the phonebooks; a line each.
  static std::string of(Handset& handset) {
    std::string all = of(handset.simReceived());
    all += '\n' + of(handset.simOutgoing());
    all += '\n' + of(handset.phoneMessages());
    all += handset.initPhonebook() ? "\nphonebook" : "\nno phonebook";
    all += '\n' + of(handset.simContacts());
    return all + '\n' + of(handset.phoneContacts());
  }
};

namespace at {

struct FakeClock : Clock {
  std::int64_t milliseconds() override { return now; }
  void sleep(int milliseconds) override { now += milliseconds; }

  std::int64_t now = 0;
};

// In what it says, "|" is CR LF and "'" a double quote.
inline std::string wire(std::string_view text) {
  std::string bytes;
  for (const char c : text) bytes += c == '|' ? "\r\n" : std::string(1, c == '\'' ? '"' : c);
  return bytes;
}

// A modem that knows its script by heart. Commands it does not know give ERROR. Time passes only while
// somebody waits for it.
struct FakeModem {
  // "COMMAND: ANSWER;...": the answers to one are divided by "~" and given in turn, the last one over and
  // over. A listing may be said by store ("AT+CMGL=4 SM"); "<text>" is what follows a prompt, "<idle>" comes
  // ten times a second while there is nothing to say.
  void learn(const std::string& script) {
    std::istringstream all{script};
    for (std::string one; std::getline(all, one, ';');) {
      if (one.empty()) continue;
      const std::size_t colon = one.find(": ");
      answers[one.substr(0, colon)] = one.substr(colon + 2);
    }
  }

  void take(char byte) {
    const bool echo = answers.contains("<echo>");
    if (echo && byte != '\r') output += byte;
    if (byte == '\x1B') {
      input.clear();
      prompted = false;
    } else if (byte == (prompted ? '\x1A' : '\r')) {
      if (echo && !prompted) output += "\r\n";
      if (!input.empty()) answer(prompted ? "<text>" : input, (prompted ? texts : commands));
    } else {
      input += byte == '"' ? '\'' : byte;
    }
  }

  void answer(const std::string& command, std::vector<std::string>& said) {
    said.push_back(std::exchange(input, {}));
    if (command.starts_with("AT+CPMS='") || command.starts_with("AT+CPBS='")) store = command.substr(9, 2);
    const bool byStore = answers.contains(command + ' ' + store);
    std::string& turns =
        answers.try_emplace(byStore ? command + ' ' + store : command, "|ERROR|").first->second;
    const std::string text = turns.substr(0, turns.find('~'));
    if (text.size() < turns.size()) turns.erase(0, text.size() + 1);
    prompted = text.find('>') != text.npos;
    for (std::size_t at = 0; at < text.size(); ++at) {
      if (text[at] != '|' && (at == 0 || text[at - 1] == '|')) output += wire(between);
      output += wire(text.substr(at, 1));
    }
    if (delay > 0)
      late.emplace_back(free = (waits ? std::max(free, clock.now) : clock.now) + delay,
                        std::exchange(output, {}));
  }

  // Time goes on to the next answer that comes by `until`.
  void wait(std::int64_t until) {
    if (output.empty() && !late.empty() && late.front().first <= until)
      clock.now = std::max(clock.now, late.front().first);
    for (; !late.empty() && late.front().first <= clock.now; late.erase(late.begin()))
      output += late.front().second;
  }

  std::map<std::string, std::string> answers;
  bool prompted = false;
  std::size_t chunk = 5000;                  // bytes that come at once
  std::size_t goneAfter = 10'000'000;        // bytes that pass, both ways
  std::string between;                       // comes before each line of an answer
  std::string input, output, store;          // `store`: that was selected last
  std::vector<std::string> commands, texts;  // that have come, whole
  std::size_t passed = 0;
  int delay = 0;      // milliseconds that an answer takes
  bool waits = true;  // with a command until the one before is answered
  std::int64_t free = 0;
  std::vector<std::pair<std::int64_t, std::string>> late;
  FakeClock clock;
};

// Keys and values among what the modem has learnt: "<pin>: 1234".
struct FakeSettings : PortSettings {
  explicit FakeSettings(FakeModem& where) : modem{where} {}
  std::string value(std::string_view key) override { return modem.answers['<' + std::string{key} + '>']; }
  void setValue(std::string_view key, std::string_view value) override {
    modem.answers['<' + std::string{key} + '>'] = value;
  }
  FakeModem& modem;
};

struct FakeLine : ByteStream {
  explicit FakeLine(FakeModem& other) : modem{other} {}
  bool write(std::string_view bytes) override {
    for (const char byte : bytes) {
      if (modem.passed >= modem.goneAfter) return false;
      ++modem.passed;
      modem.take(byte);
    }
    return true;
  }
  Arrival read(std::string& bytes, int milliseconds) override {
    if (modem.passed >= modem.goneAfter) return Arrival::gone;
    modem.wait(modem.clock.now + milliseconds);
    const std::string idle = milliseconds > 0 ? wire(modem.answers["<idle>"]) : "";
    if (modem.output.empty()) modem.clock.now += idle.empty() ? milliseconds : std::min(milliseconds, 100);
    if (modem.output.empty()) modem.output = idle;
    if (modem.output.empty()) return Arrival::nothing;
    const std::size_t count = std::min({modem.output.size(), modem.chunk, modem.goneAfter - modem.passed});
    bytes.append(modem.output, 0, count);
    modem.output.erase(0, count);
    modem.passed += count;
    return Arrival::bytes;
  }

  FakeModem& modem;
};

}  // namespace at
}  // namespace handset
