#pragma once

#include <array>
#include <cstdlib>

#include "handset/at/at_handset.h"
#include "handset/at/joined_messages.h"
#include "handset/at/message_list.h"
#include "handset/at/phonebook.h"
#include "handset/simulated/content.h"
#include "phonelink/entry_layouts.h"
#include "skin/setting_text.h"
#include "store/store_file.h"
#include "support/fake_code_pages.h"
#include "support/memory_file_system.h"
#include "text/unicode.h"

// What must hold for any input, one function for each target.
namespace fuzz {

// Where this does not hold, an input has found a fault.
inline void require(bool holds) {
  if (!holds) std::abort();
}

// Takes the text up to the separator off the front of the input.
inline std::string take(std::string_view& input, char separator) {
  const std::string text(input.substr(0, input.find(separator)));
  input.remove_prefix(std::min(text.size() + 1, input.size()));
  return text;
}

// The lines of listings, and messages in hexadecimal digits, a line each.
inline void listings(std::string_view input) {
  using namespace handset::at;
  std::vector<std::string> lines;
  std::vector<StoredPdu> stored;
  while (!input.empty() && lines.size() < 2000) {
    lines.push_back(take(input, '\n'));
    const Pdu pdu = decodePdu(lines.back());
    require(!pdu.part || (pdu.part->number > 0 && pdu.part->number <= pdu.part->total));
    require(text::isValidUtf8(pdu.number + textOf(std::span{&pdu.data, 1})));
    stored.push_back({.pdu = pdu, .hex = lines.back()});
  }
  require(std::max(joinedMessages(stored, 10).size(), messagesIn(lines).size()) <= lines.size());
  for (const CharacterSet set : {CharacterSet::ucs2, CharacterSet::gsm, CharacterSet::ira})
    for (const PhonebookEntry& entry : entriesIn(lines, set, lines.size() % 2 != 0))
      require(text::isValidUtf8(entry.contact.name + entry.contact.number));
  if (const auto range = rangeIn(lines)) require(range->first >= 0 && range->first <= range->last);
}

// All that a modem says, a piece up to a '|' for each thing that is written to it.
struct Modem : handset::at::ByteStream {
  explicit Modem(std::string_view input) : rest{input} {}
  bool write(std::string_view bytes) override {
    // Nothing is removed that was not read just before, and no PIN is entered twice.
    if (bytes.starts_with("AT+CMGD=")) require(before == "AT+CMGR=" + std::string(bytes.substr(8)));
    if (bytes.starts_with("AT+CPIN=")) require(!std::exchange(pinEntered, true));
    before = bytes;
    return (output += take(rest, '|')) != "gone";
  }
  Arrival read(std::string& bytes, int) override {
    bytes += output;
    return std::exchange(output, {}).empty() ? Arrival::nothing : Arrival::bytes;
  }

  std::string_view rest;
  std::string output, before;
  bool pinEntered = false;
};

// Everything is wanted.
struct Settings : handset::at::PortSettings {
  std::string value(std::string_view key) override {
    return key == "pin" ? "1234" : key == handset::at::reportKey ? "yes" : refused;
  }
  void setValue(std::string_view, std::string_view value) override { refused = value; }

  std::string refused;
};

// Goes on by itself, so that nobody waits for ever.
struct FastClock : handset::at::Clock {
  std::int64_t milliseconds() override { return now += 100; }
  void sleep(int milliseconds) override { now += milliseconds; }

  std::int64_t now = 0;
};

inline void channel(std::string_view input) {
  using namespace handset::at;
  FastClock clock;
  const auto open = [&](int, int) { return OpenedPort{PortProblem::none, std::make_unique<Modem>(input)}; };
  Settings settings;
  AtHandset handset(open, clock, settings);
  if (!handset.open(1, 115200)) return require(!handset.lastProblem().empty());
  require(handset.init() == handset.lastProblem().empty());
  const auto received = handset.simReceived();
  handset.phoneMessages();
  handset.send("112", std::string(200, 'x'));
  for (const ::handset::Message& message : received.items) handset.remove(message);
  handset.nextDelivery();
  handset.initPhonebook();
  handset.simContacts();
  handset.phoneContacts();
}

// A message to append, or an empty line where the file is to be rewritten; the bytes of the file.
inline void store(std::string_view input) {
  using namespace ::store;
  const std::string message = text::repairedUtf8(take(input, '\n'));
  const std::string former(input);
  const support::DoubleBytePage page;
  support::MemoryFileSystem files;
  files.put("s", former);
  StoreFile file(files, page, "s", "PCINBOX");
  FolderTable table, again;
  const bool lossless = file.read(table).lossless;
  std::vector<const SmsRecord*> records;
  for (const SmsRecord& record : table.records()) records.push_back(&record);
  const WriteResult result = message.empty() ? file.rewrite(records, table.records())
                                             : file.append({message, "", ""}, LineBreaks::sent);
  const std::string now = files.bytes("s");
  readStore(now, "PCINBOX", page, again);
  require(result.ok() && again.size() == table.size() + (message.empty() ? 0 : 1));
  // Every value that the file held is still there, in the file or in a copy.
  if (!result.keptCopy.empty()) return require(files.bytes(result.keptCopy) == former);
  require(std::ranges::equal(again.records().first(table.size()), table.records()));
  const std::string asUtf8 = std::string(text::byteOrderMark) + transcode(former, page).text;
  require(lossless || now.starts_with(former) || now.starts_with(asUtf8));
}

// A section and a key on a line each, and a settings file.
inline void settings(std::string_view input) {
  const std::string section = take(input, '\n');
  const std::string key = take(input, '\n');
  const std::string value = skin::findSetting(input, section, key).value_or("");
  require(input.find(value) != input.npos);
  skin::parseRect(value);
}

// One entry of a phone-link library: of what was decoded, encoding keeps all that fits.
template <class Entry, std::size_t Size>
void entry(std::string_view input, Entry (*decode)(std::span<const std::byte, Size>),
           void (*encode)(const Entry&, std::span<std::byte, Size>)) {
  const auto bytes = std::make_unique<std::array<std::byte, Size>>();  // so that a step beyond it is noticed
  std::ranges::copy(std::as_bytes(std::span{input.substr(0, Size)}), bytes->begin());
  encode(decode(*bytes), *bytes);
  const auto once = *bytes;
  encode(decode(*bytes), *bytes);
  require(*bytes == once);
}

inline void entries(std::string_view input) {
  entry(input, phonelink::decodeHandsetMessage, phonelink::encodeHandsetMessage);
  entry(input, phonelink::decodeContact, phonelink::encodeContact);
  entry(input, phonelink::decodeWideContact, phonelink::encodeWideContact);
}

// The simulated handset's file.
inline void content(std::string_view input) {
  const handset::Content read = handset::parseContent(input);
  require(std::max(read.messages.size(), read.contacts.size()) <= handset::maxContentItems);
  require(read.settings.delay >= 0 && read.settings.delay <= handset::maxContentDelay);
}

}  // namespace fuzz
