#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <limits>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/input.h"
#include "phonelink/entry_layouts.h"
#include "phonelink/handset_folders.h"
#include "phonelink/phone_link.h"
#include "store/utf8.h"
#include "support/fake_code_pages.h"
#include "text/unicode.h"

// What must hold for whatever a phone-link library answers.
namespace fuzz {

// A library that gives any result and fills its buffers with anything. Its functions have no argument to tell
// them by, so there is one.
struct HostileLibrary {
  int result = 0;
  bool wide = false;
  std::string_view content;
  std::string sent;
};
inline HostileLibrary hostile;

// Puts the content at both ends of the buffer: the last byte may be anything too.
template <std::size_t Size>
int hostileRead(void* buffer) {
  auto* const bytes = static_cast<char*>(buffer);
  const std::size_t length = std::min(hostile.content.size(), Size);
  std::memcpy(bytes, hostile.content.data(), length);
  std::memcpy(bytes + Size - length, hostile.content.data(), length);
  return hostile.result;
}

inline int hostileSend(void* entry) {
  hostile.sent.assign(static_cast<const char*>(entry), phonelink::messageEntrySize);
  return hostile.result;
}

// `large`: with the second phonebook too, whose buffer takes long to clear.
inline phonelink::EntryPoints hostilePoints(bool large) {
  using namespace phonelink;
  EntryPoints points;
  points.zelOpenSIM = [](int, int) { return hostile.result; };
  points.zelInitSMS = [] { return hostile.result; };
  points.zelUnicode = [](int) { return static_cast<int>(hostile.wide); };
  points.zelGetReceiverSMS = hostileRead<maxEntries * messageEntrySize>;
  points.zelGetSenderSMS = hostileRead<maxEntries * messageEntrySize>;
  points.zelGetHandSetSMS = hostileRead<maxEntries * handsetEntrySize>;
  points.zelInitPB = [] { return 1; };
  points.zelGetPB = hostileRead<contactBufferSize>;
  if (large) points.zelGetPB_KOVA = hostileRead<wideContactBufferSize>;
  points.zelSendSMS = hostileSend;
  return points;
}

inline void requireFolder(phonelink::PhoneLink& link, store::Folder folder) {
  store::FolderTable table;
  phonelink::readHandsetFolder(link, folder, table);
  require(table.size() <= 2 * phonelink::maxEntries);
  require(hostile.result > 0 || table.empty());
  require(hostile.result <= 0 ||
          table.size() >=
              std::min<std::size_t>(phonelink::maxEntries, static_cast<unsigned>(hostile.result)));
  for (const store::SmsRecord& record : table.records()) {
    for (const std::string* text : {&record.Content, &record.Phone, &record.Time})
      require(store::isValidUtf8(*text) && text->find('\0') == text->npos);
  }
}

inline void requireContacts(phonelink::PhoneLink& link) {
  const std::vector<phonelink::Contact> contacts = link.contacts();
  require(contacts.size() <= 999 + phonelink::maxEntries);
  for (const phonelink::Contact& contact : contacts) {
    require(store::isValidUtf8(contact.name) && store::isValidUtf8(contact.number));
    require(text::utf16FromUtf8(contact.name).size() <= 20);
  }
}

// A number and a text reach the library whole or not at all.
inline void requireSending(phonelink::PhoneLink& link, bool wide, const text::CodePage& page) {
  Source source{hostile.content};
  const std::string number = store::repairedUtf8(source.textUpTo('\0'));
  const std::string text = store::repairedUtf8(source.textUpTo('\0'));
  hostile.sent.clear();
  const bool sent = link.send(number, text, wide);
  require(!sent || (hostile.result != -1 && !hostile.sent.empty()));
  if (hostile.sent.empty()) return;
  const phonelink::MessageEntry entry =
      phonelink::decodeMessage(std::as_bytes(std::span{hostile.sent}).first<phonelink::messageEntrySize>());
  require(page.decode(entry.phone) == number && number.size() <= 3 * phonelink::phoneCapacity);
  const bool crossedWide = hostile.wide && entry.coding == phonelink::codingUcs2;
  require((crossedWide ? text::utf8FromUtf16(entry.wideText()) : page.decode(entry.narrowText())) ==
          text);
}

// Small numbers mostly, so that not all of a buffer is looked at for every input.
inline int hostileResult(unsigned high, unsigned low) {
  constexpr std::array extremes{std::numeric_limits<int>::min(), -1, 999, 1000, 1001,
                                std::numeric_limits<int>::max()};
  constexpr unsigned rare = 0xFF;
  return high == rare ? extremes[low % extremes.size()] : static_cast<int>(low % 8);
}

// The input as what is asked of a library, the result of its functions in two bytes, and what it writes.
inline void phoneLinks(std::string_view input) {
  Source source{input};
  const unsigned ways = source.byte();
  const unsigned high = source.byte();
  const int result = hostileResult(high, source.byte());
  hostile = {result, (ways & 1U) != 0, source.rest(), {}};

  // Kept between inputs, as their buffers are large.
  static const support::Latin1Page latin1;
  static const support::DoubleBytePage doubleByte;
  static phonelink::PhoneLink latin1Link{latin1};
  static phonelink::PhoneLink doubleByteLink{doubleByte};
  const bool isDoubleByte = (ways & 2U) != 0;
  const text::CodePage& page = isDoubleByte ? static_cast<const text::CodePage&>(doubleByte) : latin1;
  phonelink::PhoneLink& link = isDoubleByte ? doubleByteLink : latin1Link;
  constexpr unsigned largeBits = 0xF0;
  link.bind(hostilePoints((ways & largeBits) == largeBits));
  require(link.open(1) == (result != 0));
  switch (ways >> 2U & 3U) {
    case 0:
      return requireFolder(link, store::Folder::MInbox);
    case 1:
      return requireFolder(link, store::Folder::MOutbox);
    case 2:
      return requireContacts(link);
    default:
      return requireSending(link, (ways & 16U) != 0, page);
  }
}

}  // namespace fuzz
