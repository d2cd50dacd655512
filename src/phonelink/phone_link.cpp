#include "phonelink/phone_link.h"

#include <algorithm>
#include <array>
#include <span>
#include <string_view>

#include "phonelink/entry_layouts.h"
#include "text/unicode.h"

namespace phonelink {
namespace {

// The message of an entry as the tables keep it.
store::SmsRecord recordOf(const MessageEntry& entry, bool wideTexts, const text::CodePage& codePage) {
  store::SmsRecord record;
  record.Content = wideTexts && entry.coding == codingUcs2 ? text::utf8FromUtf16(entry.wideText())
                                                           : codePage.decode(entry.narrowText());
  record.Time = codePage.decode(entry.time);
  record.Phone = codePage.decode(entry.phone);
  record.Index = entry.number;
  return record;
}

// The bytes of entry `i` behind a head of `head` bytes.
template <std::size_t Size>
std::span<const std::byte, Size> entryAt(std::span<const std::byte> buffer, std::size_t head, std::size_t i) {
  return buffer.subspan(head + i * Size).first<Size>();
}

// The first 20 characters of a 16-bit name, which is what the contact list has room for; one that takes two
// code units stays whole.
std::string shownName(std::u16string_view name) {
  constexpr std::size_t shown = 20;
  return text::utf8FromUtf16(text::fitting(name, shown));
}

}  // namespace

void PhoneLink::bind(const EntryPoints& points) {
  points_ = points;
  bound_ = true;
  wideTexts_ = points_.zelUnicode && points_.zelUnicode(1) != 0;
}

void PhoneLink::unbind() {
  points_ = {};
  bound_ = false;
  wideTexts_ = false;
}

bool PhoneLink::open(int port) {
  if (!points_.zelOpenSIM || points_.zelOpenSIM(port, baudRate) == 0) return false;
  return points_.zelInitSMS && points_.zelInitSMS() != 0;
}

void PhoneLink::close() {
  if (points_.zelCloseSIM) points_.zelCloseSIM();
}

std::string PhoneLink::describe() {
  return inOneLine(said(points_.zelDescribe));
}

std::string PhoneLink::problem() {
  return inOneLine(said(points_.zelProblem));
}

std::string PhoneLink::room() {
  return inOneLine(said(points_.zelRoom));
}

std::optional<PhoneLink::Delivered> PhoneLink::delivered() {
  const std::string text = said(points_.zelDelivered);
  const std::size_t tab = text.find('\t');
  if (tab == text.npos) return std::nullopt;
  return Delivered{text.substr(0, tab), inOneLine(text.substr(tab + 1))};
}

std::string PhoneLink::said(Say say) {
  std::array<char, 256> bytes{};
  const int length = say ? say(bytes.data(), int{bytes.size()}) : 0;
  const std::string_view all(bytes.data(),
                             static_cast<std::size_t>(std::clamp(length, 0, int{bytes.size()})));
  return text::repairedUtf8(all.substr(0, all.find('\0')));
}

std::string PhoneLink::inOneLine(std::string text) {
  std::ranges::replace_if(
      text, [](unsigned char c) { return c < ' ' || c == 0x7F; }, ' ');
  return text;
}

std::size_t PhoneLink::countOf(int answer, std::size_t most) {
  if (answer < 0 && points_.zelProblem) {
    readProblem_ = problem();
    if (readProblem_.empty()) readProblem_ = "?";
    answer = -1 - answer;
  }
  return std::min(static_cast<std::size_t>(std::max(answer, 0)), most);
}

PhoneLink::Entries PhoneLink::fill(Read read, std::size_t entrySize) {
  if (!read) return {};
  Entries entries{std::vector<std::byte>(maxEntries * entrySize)};
  entries.count = countOf(read(entries.bytes.data()), maxEntries);
  return entries;
}

std::vector<store::SmsRecord> PhoneLink::messages(Read read) {
  const Entries entries = fill(read, messageEntrySize);
  std::vector<store::SmsRecord> records;
  records.reserve(entries.count);
  for (std::size_t i = 0; i < entries.count; ++i) {
    const MessageEntry entry = decodeMessage(entryAt<messageEntrySize>(entries.bytes, 0, i));
    records.push_back(recordOf(entry, wideTexts_, codePage_));
  }
  return records;
}

std::vector<store::SmsRecord> PhoneLink::receivedMessages() {
  return messages(points_.zelGetReceiverSMS);
}

std::vector<store::SmsRecord> PhoneLink::outgoingMessages() {
  return messages(points_.zelGetSenderSMS);
}

std::vector<HandsetMessage> PhoneLink::handsetMessages() {
  const Entries entries = fill(points_.zelGetHandSetSMS, handsetEntrySize);
  std::vector<HandsetMessage> found;
  found.reserve(entries.count);
  for (std::size_t i = 0; i < entries.count; ++i) {
    const MessageEntry entry = decodeHandsetMessage(entryAt<handsetEntrySize>(entries.bytes, 0, i));
    found.push_back({recordOf(entry, wideTexts_, codePage_), entry.status});
  }
  return found;
}

SendResult PhoneLink::send(const std::string& number, const std::string& text, bool wide) {
  const auto narrowNumber = codePage_.encode(number);
  if (!narrowNumber) return SendResult::notANumber;
  if (narrowNumber->size() > phoneCapacity) return SendResult::numberTooLong;
  MessageEntry entry;
  entry.phone = *narrowNumber;
  entry.coding = wide ? codingUcs2 : codingDefault;
  if (wide && wideTexts_) {
    if (!entry.setWideText(text::utf16FromUtf8(text))) return SendResult::textNotCarried;
  } else {
    const auto bytes = codePage_.encode(text);
    if (!bytes || !entry.setNarrowText(*bytes)) return SendResult::textNotCarried;
  }
  std::array<std::byte, messageEntrySize> bytes;
  encodeMessage(entry, bytes);
  const bool sent = points_.zelSendSMS && points_.zelSendSMS(bytes.data()) != -1;
  return sent ? SendResult::sent : SendResult::refused;
}

bool PhoneLink::remove(const store::SmsRecord& message) {
  const auto phone = codePage_.encode(message.Phone);
  const auto time = codePage_.encode(message.Time);
  if (!canRemove() || !phone || !time) return false;
  MessageEntry entry{.phone = *phone, .time = *time, .number = static_cast<std::int16_t>(message.Index)};
  const auto text = codePage_.encode(message.Content);
  if (!text || !entry.setNarrowText(*text)) {
    entry.coding = codingUcs2;
    if (!wideTexts_ || !entry.setWideText(text::utf16FromUtf8(message.Content))) return false;
  }
  std::array<std::byte, messageEntrySize> bytes;
  encodeMessage(entry, bytes);
  return points_.zelRemoveSMS(bytes.data()) > 0;
}

PhoneLink::Entries PhoneLink::fillContacts(Read read, std::size_t size, std::size_t entrySize) {
  if (!read) return {};
  Entries entries{std::vector<std::byte>(size)};
  const std::size_t most = (size - contactHeadSize) / entrySize;
  entries.count = countOf(read(entries.bytes.data()), most);
  return entries;
}

std::vector<Contact> PhoneLink::contacts() {
  std::vector<Contact> found;
  if (!points_.zelInitPB || points_.zelInitPB() == 0) return found;
  const Entries standard = fillContacts(points_.zelGetPB, contactBufferSize, contactEntrySize);
  for (std::size_t i = 0; i < standard.count; ++i) {
    const ContactEntry entry = decodeContact(entryAt<contactEntrySize>(standard.bytes, contactHeadSize, i));
    found.push_back({codePage_.decode(entry.name), codePage_.decode(entry.number)});
  }
  const Entries wide = fillContacts(points_.zelGetPB_KOVA, wideContactBufferSize, wideContactEntrySize);
  for (std::size_t i = 0; i < wide.count; ++i) {
    const WideContactEntry entry =
        decodeWideContact(entryAt<wideContactEntrySize>(wide.bytes, contactHeadSize, i));
    found.push_back({shownName(entry.name), codePage_.decode(entry.number)});
  }
  readProblem_.clear();  // what has come is all there is to show
  return found;
}

}  // namespace phonelink
