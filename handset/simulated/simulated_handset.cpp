#include "handset/simulated/simulated_handset.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

#include "phonelink/entry_layouts.h"

namespace handset {
namespace {

bool isReceived(const Message& message) {
  return message.status == phonelink::statusReceivedRead || message.status == phonelink::statusReceivedUnread;
}

bool isOutgoing(const Message& message) {
  return message.status == phonelink::statusOutgoing;
}

constexpr const char* simName = "sim";

Message placed(Store store, Message message) {
  message.places = {{store == Store::sim ? simName : "phone", message.storageNumber, {}}};
  return message;
}

bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

void appendTwoDigits(std::string& text, int value) {
  text.push_back(static_cast<char>('0' + value / 10 % 10));
  text.push_back(static_cast<char>('0' + value % 10));
}

}  // namespace

std::string handsetTime(const LocalTime& time) {
  std::string text;
  for (const int part : {time.year, time.month, time.day, time.hour, time.minute, time.second})
    appendTwoDigits(text, part);
  const int quarters = std::min(std::abs(time.zoneQuarters), 79);
  const int behind = time.zoneQuarters < 0 ? 8 : 0;
  text.push_back("0123456789ABCDEF"[quarters / 10 + behind]);
  text.push_back(static_cast<char>('0' + quarters % 10));
  return text;
}

SimulatedHandset::SimulatedHandset(std::unique_ptr<Environment> environment)
    : environment_{std::move(environment)} {}

// One byte more than is used, so that a file which is too long can be told.
std::optional<std::string> SimulatedHandset::readFile() {
  return environment_->readContent(maxContentSize + 1);
}

bool SimulatedHandset::open(int /*port*/, int /*baud*/) {
  const std::optional<std::string> file = readFile();
  problem_.clear();
  if (!file) {
    environment_->report("there is no content to simulate a handset from");
    return fail("there is no handset.txt");
  }
  content_ = parseContent(*file);
  for (const Problem& problem : content_.problems)
    environment_->report("line " + std::to_string(problem.line) + ": " + problem.what);
  for (const StoredMessage& removed : removed_) takeOut(removed);
  numberSentMessages();
  takeTime();
  return content_.settings.open || fail("handset.txt says open = no");
}

// A message keeps its place in the SIM's store unless the file, edited since, has put another one there.
void SimulatedHandset::numberSentMessages() {
  StorageNumbers numbers = fileNumbers();
  for (Message& message : sent_) {
    if (numbers.isTaken(message.storageNumber)) {
      message.storageNumber = numbers.takeFree();
    } else {
      numbers.take(message.storageNumber);
    }
  }
}

bool SimulatedHandset::init() {
  takeTime();
  return content_.settings.init || fail("handset.txt says init = no");
}

void SimulatedHandset::close() {
  takeTime();
}

// Asked before the first open, while it is still unknown whether there is a file: without one, yes.
bool SimulatedHandset::offersUnicode() {
  const std::optional<std::string> file = readFile();
  return !file || parseSettings(*file).unicode;
}

std::string SimulatedHandset::describe() {
  return "Simulated handset: nothing leaves this computer";
}

Listing<Message> SimulatedHandset::simReceived() {
  takeTime();
  return {messagesIn(Store::sim, isReceived)};
}

Listing<Message> SimulatedHandset::simOutgoing() {
  takeTime();
  std::vector<Message> messages = messagesIn(Store::sim, isOutgoing);
  for (const Message& message : sent_) messages.push_back(placed(Store::sim, message));
  return {messages};
}

Listing<Message> SimulatedHandset::phoneMessages() {
  takeTime();
  return {messagesIn(Store::phone, [](const Message&) { return true; })};
}

bool SimulatedHandset::send(std::string_view number, std::string_view text) {
  takeTime();
  const std::vector<std::string>& unreachable = content_.settings.unreachable;
  if (std::find(unreachable.begin(), unreachable.end(), number) != unreachable.end())
    return fail("this number cannot be reached");
  if (std::none_of(number.begin(), number.end(), isDigit)) return fail("this is no number to send to");

  StorageNumbers numbers = fileNumbers();
  for (const Message& message : sent_) numbers.take(message.storageNumber);
  const std::int16_t place = numbers.takeFree();
  if (place == 0) return fail("the memory is full");

  sent_.push_back({.number = std::string{number},
                   .time = handsetTime(environment_->now()),
                   .text = std::string{text},
                   .status = phonelink::statusOutgoing,
                   .storageNumber = place});
  return true;
}

bool SimulatedHandset::initPhonebook() {
  takeTime();
  return content_.settings.phonebook || fail("handset.txt says phonebook = no");
}

Listing<Contact> SimulatedHandset::simContacts() {
  return contactsIn(Store::sim);
}

Listing<Contact> SimulatedHandset::phoneContacts() {
  return contactsIn(Store::phone);
}

StorageNumbers SimulatedHandset::fileNumbers() const {
  StorageNumbers numbers;
  for (const StoredMessage& stored : content_.messages)
    if (stored.store == Store::sim) numbers.take(stored.message.storageNumber);
  return numbers;
}

std::vector<Message> SimulatedHandset::messagesIn(Store store, bool (*wanted)(const Message&)) const {
  std::vector<Message> messages;
  for (const StoredMessage& stored : content_.messages)
    if (stored.store == store && wanted(stored.message)) messages.push_back(placed(store, stored.message));
  return messages;
}

bool SimulatedHandset::takeOut(const StoredMessage& message) {
  const auto found = std::ranges::find(content_.messages, message);
  if (found == content_.messages.end()) return false;
  content_.messages.erase(found);
  return true;
}

bool SimulatedHandset::remove(const Message& message) {
  takeTime();
  if (message.places.empty()) return fail("its place is not known");
  StoredMessage wanted{message.places.front().store == simName ? Store::sim : Store::phone, message};
  wanted.message.places.clear();
  if (takeOut(wanted)) {
    removed_.push_back(std::move(wanted));
    return true;
  }
  const auto found = std::ranges::find(sent_, wanted.message);
  if (found == sent_.end()) return fail("the message is not at its place any more");
  sent_.erase(found);
  return true;
}

bool SimulatedHandset::fail(std::string problem) {
  problem_ = std::move(problem);
  return false;
}

Listing<Contact> SimulatedHandset::contactsIn(Store store) {
  takeTime();
  if (!content_.settings.phonebook) return {{}, fail("handset.txt says phonebook = no")};
  Listing<Contact> contacts;
  for (const StoredContact& stored : content_.contacts)
    if (stored.store == store) contacts.items.push_back(stored.contact);
  return contacts;
}

void SimulatedHandset::takeTime() {
  if (content_.settings.delay > 0) environment_->pause(content_.settings.delay);
}

}  // namespace handset
