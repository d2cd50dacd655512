#include "handset/at/at_handset.h"

#include <utility>

#include "handset/at/channel.h"
#include "handset/at/dialect.h"
#include "handset/at/fields.h"
#include "handset/at/joined_messages.h"
#include "handset/at/message_list.h"
#include "handset/at/modem_identity.h"
#include "handset/at/opening.h"
#include "handset/at/phonebook_reader.h"
#include "handset/at/submit.h"
#include "phonelink/entry_layouts.h"

namespace handset::at {
namespace {

constexpr std::string_view simStore = "SM";
constexpr std::string_view phoneStore = "ME";
constexpr const char* notOpen = "no port is open";

// A store that holds nothing is sometimes listed with an error.
bool meansEmpty(const Answer& listing, const Answer& selection) {
  constexpr int invalidIndex = 321;
  if (listing.outcome != Answer::Outcome::refused) return false;
  if (listing.result.family == FinalResult::Family::message && listing.result.number == invalidIndex)
    return true;
  const std::optional<std::string_view> counts = valueOf(selection.lines, "+CPMS:");
  return counts && numberOf(fieldsOf(*counts).front().text) == 0;
}

}  // namespace

AtHandset::AtHandset(OpenPort openPort, Clock& clock, std::size_t joinLimit)
    : openPort_{std::move(openPort)}, clock_{clock}, joinLimit_{joinLimit} {}

AtHandset::~AtHandset() = default;

bool AtHandset::fail(std::string problem) {
  lastProblem_ = std::move(problem);
  return false;
}

bool AtHandset::open(int port, int baud) {
  close();
  lastProblem_.clear();
  OpenedPort opened = openPort_(port, baud);
  if (!opened.stream) return fail(problemOf(opened.problem, port));
  stream_ = std::move(opened.stream);
  port_ = port;
  channel_ = std::make_unique<Channel>(*stream_, clock_);
  dialect_ = std::make_unique<Dialect>();
  // Not the same for every run, or parts of different messages would look alike to their receiver.
  reference_ = static_cast<std::uint8_t>(clock_.milliseconds());
  const std::string problem = findModem(*channel_);
  if (problem.empty()) return true;
  close();
  return fail(problem);
}

bool AtHandset::init() {
  if (!channel_) return fail(notOpen);
  std::string problem = prepareForMessages(*channel_, clock_, *dialect_);
  return problem.empty() || fail(std::move(problem));
}

void AtHandset::close() {
  simOutgoing_.reset();
  dialect_.reset();
  channel_.reset();
  stream_.reset();
}

bool AtHandset::offersUnicode() {
  return true;
}

// A modem that does not tell its name has at least a port.
std::string AtHandset::describe() {
  constexpr int deadline = 500;
  ModemIdentity identity;
  if (channel_) askName(*channel_, deadline, identity);
  const std::string name = nameOf(identity);
  return name + (name.empty() ? "COM" : " at COM") + std::to_string(port_);
}

std::optional<std::vector<Message>> AtHandset::listStore(std::string_view store) {
  if (!channel_) {
    fail(notOpen);
    return std::nullopt;
  }
  if (!Dialect::mayOffer(dialect_->messageStores, store)) return std::vector<Message>{};
  const std::string name = "messages in " + std::string{store} + ": ";
  // Only what is read and deleted; where new messages go is left alone.
  const Answer selection = select(*channel_, clock_, "AT+CPMS=", "+CPMS:", store, dialect_->hexStrings);
  if (!selection.ok()) {
    fail(name + problemOf(selection));
    return std::nullopt;
  }
  const Answer listing = channel_->command("AT+CMGL=4", "+CMGL:", listDeadline);
  if (!listing.ok() && !meansEmpty(listing, selection)) {
    fail(name + problemOf(listing));
    return std::nullopt;
  }
  return joinedMessages(messagesIn(listing.lines), joinLimit_);
}

std::optional<std::vector<Message>> AtHandset::simReceived() {
  std::optional<std::vector<Message>> all = listStore(simStore);
  simOutgoing_.reset();
  if (!all) return std::nullopt;
  std::vector<Message> received;
  simOutgoing_.emplace();
  for (Message& message : *all) {
    const bool outgoing = message.status == phonelink::statusOutgoing;
    (outgoing ? *simOutgoing_ : received).push_back(std::move(message));
  }
  return received;
}

// Listing takes long, and whoever wants one half of the store wants the other one too.
std::optional<std::vector<Message>> AtHandset::simOutgoing() {
  if (!simOutgoing_ && !simReceived()) return std::nullopt;
  return std::exchange(simOutgoing_, std::nullopt);
}

std::optional<std::vector<Message>> AtHandset::phoneMessages() {
  return listStore(phoneStore);
}

bool AtHandset::send(std::string_view number, std::string_view text) {
  if (!channel_) return fail(notOpen);
  simOutgoing_.reset();
  const std::optional<std::vector<SubmitPdu>> parts = submitPdus(number, text, reference_);
  if (!parts) return fail(dialledNumber(number) ? "the text is too long" : "this is no number to send to");
  if (parts->size() > 1) ++reference_;
  for (const SubmitPdu& part : *parts) {
    const Answer answer = channel_->commandWithText("AT+CMGS=" + std::to_string(part.octets), part.hex,
                                                    "+CMGS:", promptDeadline, sendDeadline);
    if (!answer.ok()) return fail(problemOf(answer));
    // Whether it went out is then unknown; sending it again could send it twice.
    if (!valueOf(answer.lines, "+CMGS:")) return fail("the handset does not confirm the message");
  }
  return true;
}

bool AtHandset::initPhonebook() {
  if (!channel_) return fail(notOpen);
  PhonebookReader reader{*channel_, clock_, *dialect_};
  return reader.select(simStore) || (!channel_->gone() && reader.select(phoneStore)) ||
         fail(reader.problem());
}

std::optional<std::vector<Contact>> AtHandset::listContacts(std::string_view store) {
  if (!channel_) {
    fail(notOpen);
    return std::nullopt;
  }
  PhonebookReader reader{*channel_, clock_, *dialect_};
  std::optional<std::vector<Contact>> contacts = reader.read(store);
  if (!contacts) fail(reader.problem());
  return contacts;
}

std::optional<std::vector<Contact>> AtHandset::simContacts() {
  return listContacts(simStore);
}

std::optional<std::vector<Contact>> AtHandset::phoneContacts() {
  return listContacts(phoneStore);
}

}  // namespace handset::at
