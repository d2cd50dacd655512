#include "phonelink/phone_link.h"

#include <algorithm>
#include <span>

#include "phonelink/entry_layouts.h"

namespace phonelink {
namespace {

// The message of an entry as the tables keep it.
store::SmsRecord recordOf(const MessageEntry& entry, bool wideTexts, const store::CodePage& codePage) {
  store::SmsRecord record;
  record.Content = wideTexts && entry.coding == codingUcs2 ? utf8FromUtf16(entry.wideText())
                                                           : codePage.decode(entry.narrowText());
  record.Time = codePage.decode(entry.time);
  record.Phone = codePage.decode(entry.phone);
  record.Index = entry.number;
  return record;
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

std::size_t PhoneLink::fill(Read read, std::size_t entrySize) {
  if (!read) return 0;
  buffer_.assign(maxEntries * entrySize, std::byte{0});
  return static_cast<std::size_t>(std::clamp(read(buffer_.data()), 0, static_cast<int>(maxEntries)));
}

std::vector<store::SmsRecord> PhoneLink::messages(Read read) {
  const std::size_t count = fill(read, messageEntrySize);
  std::vector<store::SmsRecord> records;
  records.reserve(count);
  for (std::size_t i = 0; i < count; ++i) {
    const auto bytes = std::span{buffer_}.subspan(i * messageEntrySize).first<messageEntrySize>();
    records.push_back(recordOf(decodeMessage(bytes), wideTexts_, codePage_));
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
  const std::size_t count = fill(points_.zelGetHandSetSMS, handsetEntrySize);
  std::vector<HandsetMessage> found;
  found.reserve(count);
  for (std::size_t i = 0; i < count; ++i) {
    const auto bytes = std::span{buffer_}.subspan(i * handsetEntrySize).first<handsetEntrySize>();
    const MessageEntry entry = decodeHandsetMessage(bytes);
    found.push_back({recordOf(entry, wideTexts_, codePage_), entry.status});
  }
  return found;
}

}  // namespace phonelink
