#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "fuzz/input.h"
#include "handset/at/at_handset.h"
#include "handset/at/fields.h"
#include "handset/at/message_list.h"
#include "handset/at/phonebook.h"
#include "handset/at/submit.h"
#include "phonelink/entry_layouts.h"
#include "text/unicode.h"

// What must hold for whatever a modem says. Each function takes one input and aborts where it does not hold.
namespace handset::at::fuzz {

using ::fuzz::require;
using ::fuzz::requireUtf8;
using ::fuzz::split;

// The input as messages in hexadecimal digits, a line each, and as a text to send.
inline void pdus(std::string_view input) {
  std::vector<StoredPdu> stored;
  for (const std::string& line : split(input, '\n')) {
    StoredPdu one;
    one.hex = line;
    one.pdu = decodePdu(line);
    require(!one.pdu.part || (one.pdu.part->number > 0 && one.pdu.part->number <= one.pdu.part->total));
    require(one.pdu.time.empty() || one.pdu.time.size() == 14);
    requireUtf8(one.pdu.number);
    requireUtf8(textOf(std::span{&one.pdu.data, 1}));
    stored.push_back(std::move(one));
  }
  for (const std::size_t limit : {std::size_t{10}, std::size_t{100'000}}) {
    const std::vector<Message> rows = joinedMessages(stored, limit);
    require(!rows.empty() && rows.size() <= stored.size());
  }

  const std::string text{input};
  const auto sent = submitPdus("+31600000001", text, static_cast<std::uint16_t>(input.size() * 7));
  if (!sent) return;
  std::vector<UserData> parts;
  for (const SubmitPdu& part : *sent) {
    const Pdu pdu = decodePdu(part.hex);
    require(pdu.kind == PduKind::submit && part.octets * 2 + 2 == part.hex.size() && part.octets <= 155);
    parts.push_back(pdu.data);
  }
  std::string expected;
  char before = 0;
  for (const char c : text::utf8FromUtf16(text::utf16FromUtf8(text))) {
    if (c != '\n' || before != '\r') expected += c == '\r' ? '\n' : c;
    before = c;
  }
  require(textOf(parts) == expected);
}

// The input as the lines of listings.
inline void listings(std::string_view input) {
  const std::vector<std::string> lines = split(input, '\n');
  require(messagesIn(lines).size() <= lines.size());
  for (const CharacterSet set : {CharacterSet::ucs2, CharacterSet::gsm, CharacterSet::ira}) {
    for (const bool hexNumbers : {false, true}) {
      const std::vector<PhonebookEntry> entries = entriesIn(lines, set, hexNumbers);
      require(entries.size() <= lines.size());
      for (const PhonebookEntry& entry : entries) {
        requireUtf8(entry.contact.name);
        requireUtf8(entry.contact.number);
      }
    }
  }
  if (const auto range = rangeIn(lines)) require(range->first >= 0 && range->first <= range->last);
  if (const auto capacity = capacityIn(lines)) require(capacity->last > 0);
  for (const std::string& line : lines) {
    require(!fieldsOf(line).empty());
    for (const std::string& word : wordsOf(firstGroupOf(line))) require(!word.empty());
  }
}

// A line whose other end says the input, a piece for each thing that is written, whatever it was.
class InputLine : public ByteStream {
 public:
  struct State : Clock {
    std::int64_t milliseconds() override { return now; }
    void sleep(int milliseconds) override { now += milliseconds; }

    std::vector<std::string> pieces;  // the next one last
    std::string output;
    std::size_t chunk = 1;
    std::size_t texts = 0;
    std::int64_t now = 0;
  };

  explicit InputLine(State& state) : state_{state} {}

  bool write(std::string_view bytes) override {
    if (bytes.ends_with('\x1A')) ++state_.texts;
    if (state_.pieces.empty()) return true;
    state_.output += state_.pieces.back();
    state_.pieces.pop_back();
    return state_.pieces.empty() || state_.pieces.back() != "gone";
  }

  Arrival read(std::string& bytes, int milliseconds) override {
    if (state_.output.empty()) {
      state_.now += milliseconds;
      return Arrival::nothing;
    }
    const std::size_t count = std::min(state_.chunk, state_.output.size());
    bytes.append(state_.output, 0, count);
    state_.output.erase(0, count);
    return Arrival::bytes;
  }

  void discardInput() override { state_.output.clear(); }

 private:
  State& state_;
};

// The input as everything that a modem says: how much of it comes at once, then pieces up to a '|' each.
inline void sessions(std::string_view input) {
  if (input.empty()) return;
  InputLine::State state;
  state.chunk = std::size_t{1} + static_cast<unsigned char>(input.front()) % 64;
  state.pieces = split(input.substr(1), '|');
  std::ranges::reverse(state.pieces);
  const OpenPort open = [&state](int, int) {
    return OpenedPort{PortProblem::none, std::make_unique<InputLine>(state)};
  };
  AtHandset handset{open, state};
  const bool opened = handset.open(1, 115200);
  require(state.now <= 4000);
  require(opened == handset.lastProblem().empty());
  if (!opened) return;
  handset.init();
  require(state.now <= 60'000);
  handset.simReceived();
  handset.simOutgoing();
  handset.phoneMessages();
  const bool takesTwo = (static_cast<unsigned char>(input.front()) & 0x80U) != 0;
  const std::size_t parts = takesTwo ? 2 : 1;
  const std::int64_t before = state.now;
  const bool sent = handset.send("112", takesTwo ? std::string(200, 'x') : "x");
  require(state.texts <= parts && (!sent || state.texts == parts));
  require(state.now - before <= static_cast<std::int64_t>(parts) * 75'000);
  handset.initPhonebook();
  handset.simContacts();
  handset.phoneContacts();
}

}  // namespace handset::at::fuzz
