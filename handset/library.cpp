#include "handset/library.h"

#include <algorithm>
#include <utility>

#include "handset/entry_texts.h"
#include "text/unicode.h"

namespace handset {
namespace {

constexpr int sent = 1;
constexpr int notSent = -1;

template <std::size_t Size>
std::size_t roomFor(std::span<std::byte> buffer) {
  return std::min(buffer.size() / Size, phonelink::maxEntries);
}

std::span<std::byte> withoutHead(std::span<std::byte> buffer) {
  return buffer.subspan(std::min(buffer.size(), phonelink::contactHeadSize));
}

// Writes contacts one behind the other; `encode` makes one contact into its entry.
template <std::size_t Size, typename Encode>
int fillContacts(const std::optional<std::vector<Contact>>& contacts, std::span<std::byte> buffer,
                 Encode encode) {
  if (!contacts) return 0;
  const std::span<std::byte> entries = withoutHead(buffer);
  const std::size_t count = std::min(contacts->size(), roomFor<Size>(entries));
  for (std::size_t i = 0; i < count; ++i) encode((*contacts)[i], entries.subspan(i * Size).first<Size>());
  return static_cast<int>(count);
}

}  // namespace

Library::Library(std::unique_ptr<Handset> simulated, std::unique_ptr<Handset> real,
                 std::unique_ptr<text::CodePage> codePage)
    : simulated_{std::move(simulated)}, real_{std::move(real)}, codePage_{std::move(codePage)} {}

int Library::open(int port, int baud) {
  close();
  Handset& handset = port == simulatedPort ? *simulated_ : *real_;
  if (!handset.open(port, baud)) return 0;
  opened_ = &handset;
  return 1;
}

int Library::init() {
  ready_ = opened_ && opened_->init();
  return ready_ ? 1 : 0;
}

void Library::close() {
  ready_ = false;
  if (Handset* const handset = std::exchange(opened_, nullptr)) handset->close();
}

int Library::setUnicode(int on) {
  // Asked before any port is opened, so the answer has to hold for both.
  unicode_ = on != 0 && simulated_->offersUnicode() && real_->offersUnicode();
  return unicode_ ? 1 : 0;
}

int Library::describe(std::span<char> text) {
  if (!ready_ || text.empty()) return 0;
  const std::size_t length = opened_->describe().copy(text.data(), text.size() - 1);
  text[length] = '\0';
  return static_cast<int>(length);
}

// A text longer than its field goes on in further entries that are otherwise the same: nothing is lost.
std::vector<phonelink::MessageEntry> Library::entriesOf(const Message& message) const {
  phonelink::MessageEntry entry;
  entry.phone = narrowField(message.number, phonelink::phoneCapacity);
  entry.time = narrowField(message.time, phonelink::timeCapacity);
  entry.number = message.storageNumber;
  entry.status = message.status;

  std::vector<phonelink::MessageEntry> entries;
  // 16-bit characters only where they are needed: half as many fit.
  if (unicode_ && !codePage_->encode(message.text)) {
    entry.coding = phonelink::codingUcs2;
    for (const std::u16string& piece : widePieces(message.text, phonelink::wideTextCapacity)) {
      entry.setWideText(piece);
      entries.push_back(entry);
    }
  } else {
    for (const std::string& piece : narrowPieces(message.text, phonelink::textCapacity, *codePage_)) {
      entry.setNarrowText(piece);
      entries.push_back(entry);
    }
  }
  return entries;
}

std::string Library::narrowField(const std::string& text, std::size_t capacity) const {
  return narrowPieces(text, capacity, *codePage_).front();
}

template <std::size_t Size, typename Encode>
int Library::fillMessages(const std::optional<std::vector<Message>>& messages, std::span<std::byte> buffer,
                          Encode encode) const {
  if (!messages) return 0;
  const std::size_t room = roomFor<Size>(buffer);
  std::size_t count = 0;
  for (const Message& message : *messages) {
    for (const phonelink::MessageEntry& entry : entriesOf(message)) {
      if (count == room) return static_cast<int>(count);
      encode(entry, buffer.subspan(count * Size).template first<Size>());
      ++count;
    }
  }
  return static_cast<int>(count);
}

int Library::receivedMessages(std::span<std::byte> entries) {
  if (!ready_) return 0;
  return fillMessages<phonelink::messageEntrySize>(opened_->simReceived(), entries, phonelink::encodeMessage);
}

int Library::outgoingMessages(std::span<std::byte> entries) {
  if (!ready_) return 0;
  return fillMessages<phonelink::messageEntrySize>(opened_->simOutgoing(), entries, phonelink::encodeMessage);
}

int Library::handsetMessages(std::span<std::byte> entries) {
  if (!ready_) return 0;
  return fillMessages<phonelink::handsetEntrySize>(opened_->phoneMessages(), entries,
                                                   phonelink::encodeHandsetMessage);
}

int Library::send(phonelink::MessageBytes entry) {
  if (!ready_) return notSent;
  const phonelink::MessageEntry message = phonelink::decodeMessage(entry);
  // A number that fills its field to the last byte has no end: half a number reaches somebody else.
  if (message.phone.empty() || message.phone.size() > phonelink::phoneCapacity) return notSent;
  const bool wide = unicode_ && message.coding == phonelink::codingUcs2;
  const std::string text =
      wide ? text::utf8FromUtf16(message.wideText()) : codePage_->decode(message.narrowText());
  return opened_->send(message.phone, text) ? sent : notSent;
}

int Library::initPhonebook() {
  return ready_ && opened_->initPhonebook() ? 1 : 0;
}

int Library::contacts(std::span<std::byte> buffer) {
  if (!ready_) return 0;
  const auto encode = [this](const Contact& contact, auto bytes) {
    phonelink::encodeContact({narrowField(contact.number, phonelink::contactNumberCapacity),
                              narrowField(contact.name, phonelink::contactNameCapacity)},
                             bytes);
  };
  return fillContacts<phonelink::contactEntrySize>(opened_->simContacts(), buffer, encode);
}

int Library::wideContacts(std::span<std::byte> buffer) {
  if (!ready_) return 0;
  const auto encode = [this](const Contact& contact, auto bytes) {
    phonelink::encodeWideContact({widePieces(contact.name, phonelink::wideContactNameCapacity).front(),
                                  narrowField(contact.number, phonelink::wideContactNumberCapacity)},
                                 bytes);
  };
  return fillContacts<phonelink::wideContactEntrySize>(opened_->phoneContacts(), buffer, encode);
}

}  // namespace handset
