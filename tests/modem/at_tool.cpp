// The parts that speak to real handsets, for a script to drive. What they say comes out as one JSON value.
//
//   at_tool decode HEX…                        one message, of all its parts: kind, number, time, text
//   at_tool encode NUMBER TEXT REFERENCE       its parts: [[hex, octets], …], or null when it cannot be sent
//   at_tool list TERMINAL                      what a handset holds: opened, ready, received, outgoing,
//                                              phone, sim_contacts, phone_contacts, problem
//   at_tool messages TERMINAL                  the messages alone: [received, outgoing, phone]
//   at_tool send TERMINAL NUMBER TEXT          sent, problem
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

using handset::Contact;
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

std::string flag(bool value) {
  return value ? "true" : "false";
}

std::string json(const Message& m) {
  return list({std::to_string(m.status), std::to_string(m.storageNumber), quoted(m.number), quoted(m.time),
               quoted(m.text)});
}

std::string json(const Contact& c) {
  return list({quoted(c.name), quoted(c.number)});
}

template <typename Item>
std::string json(const std::optional<std::vector<Item>>& items) {
  if (!items) return "null";
  std::vector<std::string> texts;
  for (const Item& item : *items) texts.push_back(json(item));
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

std::string listEverything(AtHandset& phone, bool opened, bool ready) {
  std::string result = "{\"opened\": " + flag(opened) + ", \"ready\": " + flag(ready);
  if (ready) {
    result += ", \"received\": " + json(phone.simReceived());
    result += ", \"outgoing\": " + json(phone.simOutgoing());
    result += ", \"phone\": " + json(phone.phoneMessages());
    const bool phonebook = phone.initPhonebook();
    result += ", \"sim_contacts\": " + (phonebook ? json(phone.simContacts()) : "null");
    result += ", \"phone_contacts\": " + (phonebook ? json(phone.phoneContacts()) : "null");
  }
  return result + ", \"problem\": " + quoted(phone.lastProblem()) + "}";
}

std::string talk(const std::string& command, const std::vector<std::string>& rest) {
  modem_test::PosixClock clock;
  AtHandset phone{[&rest](int, int) { return modem_test::openTerminal(rest[0]); }, clock};
  const bool opened = phone.open(1, 115200);
  const bool ready = opened && phone.init();
  std::string result;
  if (command == "list") {
    result = listEverything(phone, opened, ready);
  } else if (command == "messages") {
    using Messages = std::optional<std::vector<Message>>;
    const Messages received = ready ? phone.simReceived() : std::nullopt;
    const Messages outgoing = ready ? phone.simOutgoing() : std::nullopt;
    const Messages stored = ready ? phone.phoneMessages() : std::nullopt;
    result = list({json(received), json(outgoing), json(stored)});
  } else {
    const bool sent = ready && phone.send(rest[1], rest[2]);
    result = "{\"sent\": " + flag(sent) + ", \"problem\": " + quoted(phone.lastProblem()) + "}";
  }
  phone.close();
  return result;
}

std::optional<std::string> run(const std::vector<std::string>& words) {
  if (words.size() < 2) return std::nullopt;
  const std::vector<std::string> rest(words.begin() + 1, words.end());
  if (words[0] == "decode") return decode(rest);
  if (words[0] == "encode" && rest.size() == 3) return encode(rest[0], rest[1], rest[2]);
  if ((words[0] == "list" || words[0] == "messages") && rest.size() == 1) return talk(words[0], rest);
  if (words[0] == "send" && rest.size() == 3) return talk(words[0], rest);
  return std::nullopt;
}

}  // namespace

int main(int count, char** arguments) {
  const std::optional<std::string> result = run({arguments + 1, arguments + count});
  if (!result) {
    std::fputs("at_tool decode | encode | list | messages | send: see its source\n", stderr);
    return 64;
  }
  return std::puts(result->c_str()) < 0 ? 3 : 0;
}
