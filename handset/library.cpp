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

constexpr const char* notReady = "no handset is open";

}  // namespace

Library::Library(std::unique_ptr<Handset> simulated, std::unique_ptr<Handset> real,
                 std::unique_ptr<text::CodePage> codePage)
    : simulated_{std::move(simulated)}, real_{std::move(real)}, codePage_{std::move(codePage)} {}

int Library::open(int port, int baud) {
  close();
  problem_.clear();
  room_.clear();
  Handset& handset = port == simulatedPort ? *simulated_ : *real_;
  if (handset.open(port, baud)) opened_ = &handset;
  if (!opened_) problem_ = handset.lastProblem();
  return opened_ ? 1 : 0;
}

int Library::init() {
  ready_ = opened_ && opened_->init();
  return answer(ready_, 1, 0);
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
  entry.phone = numberField(message.number, phonelink::phoneCapacity);
  entry.time = narrowField(message.time, phonelink::timeCapacity);
  entry.number = message.storageNumber;
  entry.status = message.status;

  // A number that does not fit is whole in the text.
  const bool whole = entry.phone == narrowField(message.number, message.number.size());
  const std::string text = whole ? message.text : message.number + ": " + message.text;

  std::vector<phonelink::MessageEntry> entries;
  // 16-bit characters only where they are needed: half as many fit.
  if (unicode_ && !codePage_->encode(text)) {
    entry.coding = phonelink::codingUcs2;
    for (const std::u16string& piece : widePieces(text, phonelink::wideTextCapacity)) {
      entry.setWideText(piece);
      entries.push_back(entry);
    }
  } else {
    for (const std::string& piece : narrowPieces(text, phonelink::textCapacity, *codePage_)) {
      entry.setNarrowText(piece);
      entries.push_back(entry);
    }
  }
  return entries;
}

std::string Library::narrowField(const std::string& text, std::size_t capacity) const {
  return narrowPieces(text, capacity, *codePage_).front();
}

std::string Library::ellipsis() const {
  return codePage_->encode("…").value_or("...");
}

// A part of a number would be another one's: it ends in what no number has.
std::string Library::numberField(const std::string& number, std::size_t capacity) const {
  const std::vector<std::string> pieces = narrowPieces(number, capacity, *codePage_);
  if (pieces.size() == 1) return pieces.front();
  return narrowField(number, capacity - ellipsis().size()) + ellipsis();
}

int Library::counted(std::size_t entries, bool complete) {
  const int count = static_cast<int>(entries);
  return answer(complete, count, -1 - count);
}

// Keeps the reason when something was not done.
int Library::answer(bool done, int yes, int no) {
  if (!done && opened_) problem_ = text::repairedUtf8(opened_->lastProblem());
  if (!done && problem_.empty()) problem_ = notReady;
  return done ? yes : no;
}

template <std::size_t Size, typename Encode>
int Library::fillMessages(Listing<Message> (Handset::*list)(), std::vector<Listed>& known,
                          std::span<std::byte> buffer, Encode encode) {
  if (!ready_) return counted(0, false);
  Listing<Message> listing = (opened_->*list)();
  room_ = opened_->simRoom();
  known.clear();
  const std::size_t room = roomFor<Size>(buffer);
  std::size_t count = 0;
  for (Message& message : listing.items) {
    if (count == room) break;
    Listed& listed = known.emplace_back();
    listed.entries = entriesOf(message);
    listed.unwanted.resize(listed.entries.size());
    listed.message = std::move(message);
    for (const phonelink::MessageEntry& entry : listed.entries) {
      if (count == room) break;
      encode(entry, buffer.subspan(count * Size).template first<Size>());
      ++count;
    }
  }
  return counted(count, listing.complete);
}

// Writes contacts one behind the other; `encode` makes one contact into its entry.
template <std::size_t Size, typename Encode>
int Library::fillContacts(Listing<Contact> (Handset::*list)(), std::span<std::byte> buffer, Encode encode) {
  if (!ready_) return counted(0, false);
  const Listing<Contact> listing = (opened_->*list)();
  const std::span<std::byte> entries = withoutHead(buffer);
  const std::size_t count = std::min(listing.items.size(), roomFor<Size>(entries));
  for (std::size_t i = 0; i < count; ++i) encode(listing.items[i], entries.subspan(i * Size).first<Size>());
  return counted(count, listing.complete);
}

int Library::receivedMessages(std::span<std::byte> entries) {
  return fillMessages<phonelink::messageEntrySize>(&Handset::simReceived, received_, entries,
                                                   phonelink::encodeMessage);
}

int Library::outgoingMessages(std::span<std::byte> entries) {
  return fillMessages<phonelink::messageEntrySize>(&Handset::simOutgoing, outgoing_, entries,
                                                   phonelink::encodeMessage);
}

int Library::handsetMessages(std::span<std::byte> entries) {
  return fillMessages<phonelink::handsetEntrySize>(&Handset::phoneMessages, phone_, entries,
                                                   phonelink::encodeHandsetMessage);
}

std::string Library::textOf(const phonelink::MessageEntry& entry) const {
  const bool wide = unicode_ && entry.coding == phonelink::codingUcs2;
  return wide ? text::utf8FromUtf16(entry.wideText()) : codePage_->decode(entry.narrowText());
}

int Library::send(phonelink::MessageBytes entry) {
  if (!ready_) return answer(false, sent, notSent);
  const phonelink::MessageEntry message = phonelink::decodeMessage(entry);
  // A number that fills its field to the last byte has no end: half a number reaches somebody else. So does
  // one that a read has shortened.
  const bool whole = !message.phone.empty() && message.phone.size() <= phonelink::phoneCapacity &&
                     !message.phone.ends_with("...") && !message.phone.ends_with(ellipsis());
  if (!whole) {
    problem_ = "this is no whole number to send to";
    return notSent;
  }
  return answer(opened_->send(message.phone, textOf(message)), sent, notSent);
}

// The text may be coded otherwise; what it says has to be the same.
bool Library::sameEntry(const phonelink::MessageEntry& left, const phonelink::MessageEntry& right) const {
  return left.phone == right.phone && left.number == right.number && left.time == right.time &&
         textOf(left) == textOf(right);
}

int Library::removeEntry(Listed& listed, std::size_t entry) {
  constexpr int gone = 1;
  constexpr int goesWithTheRest = 2;
  listed.unwanted[entry] = true;
  if (std::ranges::find(listed.unwanted, false) != listed.unwanted.end()) return goesWithTheRest;
  const bool removed = opened_->remove(listed.message);
  if (!removed) listed.unwanted.assign(listed.unwanted.size(), false);
  return answer(removed, gone, 0);
}

int Library::remove(phonelink::MessageBytes entry) {
  if (!ready_) return answer(false, 1, 0);
  const phonelink::MessageEntry wanted = phonelink::decodeMessage(entry);
  for (std::vector<Listed>* list : {&received_, &outgoing_, &phone_}) {
    for (Listed& listed : *list) {
      for (std::size_t i = 0; i < listed.entries.size(); ++i)
        if (!listed.unwanted[i] && sameEntry(listed.entries[i], wanted)) return removeEntry(listed, i);
    }
  }
  problem_ = "the message is not in the last list";
  return 0;
}

std::string Library::delivered() {
  return ready_ ? text::repairedUtf8(opened_->nextDelivery()) : std::string{};
}

int Library::initPhonebook() {
  return answer(ready_ && opened_->initPhonebook(), 1, 0);
}

int Library::contacts(std::span<std::byte> buffer) {
  const auto encode = [this](const Contact& contact, auto bytes) {
    phonelink::encodeContact({narrowField(contact.number, phonelink::contactNumberCapacity),
                              narrowField(contact.name, phonelink::contactNameCapacity)},
                             bytes);
  };
  return fillContacts<phonelink::contactEntrySize>(&Handset::simContacts, buffer, encode);
}

int Library::wideContacts(std::span<std::byte> buffer) {
  const auto encode = [this](const Contact& contact, auto bytes) {
    phonelink::encodeWideContact({widePieces(contact.name, phonelink::wideContactNameCapacity).front(),
                                  narrowField(contact.number, phonelink::wideContactNumberCapacity)},
                                 bytes);
  };
  return fillContacts<phonelink::wideContactEntrySize>(&Handset::phoneContacts, buffer, encode);
}

}  // namespace handset
