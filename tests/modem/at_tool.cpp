// The parts that speak to real handsets, for a script to drive. What they say comes out as one JSON value.
//
//   at_tool decode HEX…                        one message, of all its parts: kind, number, time, text
//   at_tool encode NUMBER TEXT REFERENCE       its parts: [[hex, octets], …], or null when it cannot be sent
//   at_tool messages TERMINAL                  what a handset holds: [received, outgoing, phone]
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "handset/at/at_handset.h"
#include "handset/at/pdu.h"
#include "handset/at/submit.h"
#include "posix_line.h"

namespace {

using handset::Message;
using handset::at::AtHandset;

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

std::string messages(const std::string& terminal) {
  modem_test::PosixClock clock;
  AtHandset phone{[&terminal](int, int) { return modem_test::openTerminal(terminal); }, clock};
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
