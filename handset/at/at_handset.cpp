#include "handset/at/at_handset.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "handset/at/channel.h"
#include "handset/at/dialect.h"
#include "handset/at/fields.h"
#include "handset/at/joined_messages.h"
#include "handset/at/message_reader.h"
#include "handset/at/message_sender.h"
#include "handset/at/modem_identity.h"
#include "handset/at/opening.h"
#include "handset/at/phonebook_reader.h"
#include "handset/at/submit.h"
#include "phonelink/entry_layouts.h"

namespace handset::at {
namespace {

constexpr std::string_view simStore = "SM";
constexpr std::string_view phoneMemory = "ME";
constexpr std::string_view bothStores = "MT";
constexpr std::string_view reportStore = "SR";
constexpr const char* notOpen = "no port is open";

}  // namespace

AtHandset::AtHandset(OpenPort openPort, Clock& clock, PortSettings& settings, std::size_t joinLimit)
    : openPort_{std::move(openPort)}, clock_{clock}, settings_{settings}, joinLimit_{joinLimit} {}

AtHandset::~AtHandset() = default;

bool AtHandset::fail(std::string problem) {
  lastProblem_ = std::move(problem);
  return false;
}

bool AtHandset::open(int port, int baud) {
  close();
  lastProblem_.clear();
  if (std::exchange(port_, port) != port) {
    handedOver_.clear();
    removed_.clear();
    settled_ = 0;
  }
  OpenedPort opened = openPort_(port, baud);
  if (!opened.stream) return fail(problemOf(opened.problem, port));
  stream_ = std::move(opened.stream);
  port_ = port;
  channel_ = std::make_unique<Channel>(*stream_, clock_);
  dialect_ = std::make_unique<Dialect>();
  // Not the same for every run, or parts of different messages would look alike to their receiver.
  reference_ = static_cast<std::uint8_t>(clock_.milliseconds());
  const std::string problem = findModem(*channel_, *dialect_);
  if (problem.empty()) return true;
  close();
  return fail(problem);
}

bool AtHandset::init() {
  if (!channel_) return fail(notOpen);
  std::string problem = prepareForMessages(*channel_, clock_, settings_, *dialect_);
  return problem.empty() || fail(std::move(problem));
}

void AtHandset::close() {
  endReading();
  if (channel_) handedOver_.take(*channel_);
  settled_ = handedOver_.all().size();
  sent_.clear();
  deliveries_.clear();
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

void AtHandset::endReading() {
  simOutgoing_.reset();
  phone_.reset();
  stalled_.clear();
}

// Whether a message lies where it was removed; the removals from the store are forgotten.
bool AtHandset::keptRemoved(std::string_view store, const std::vector<StoredPdu>& listed) {
  const auto kept = [&listed](const Place& gone) {
    return std::ranges::any_of(listed, [&gone](const StoredPdu& one) {
      return one.store == gone.store && one.index == gone.index && sameMessage(one, gone);
    });
  };
  const bool any = std::ranges::any_of(removed_, kept);
  std::erase_if(removed_, [store](const Place& gone) { return gone.store == store; });
  return any;
}

// Appends what the store holds, if the handset has it; false: not all of it.
bool AtHandset::readStore(std::string_view store, std::vector<StoredPdu>& stored) {
  if (!stalled_.empty()) return fail(stalled_);
  if (!Dialect::mayOffer(dialect_->messageStores, store)) return true;
  MessageReader reader{*channel_, clock_, *dialect_};
  std::vector<StoredPdu> read = reader.read(store);
  const bool kept = keptRemoved(store, read);
  stored.insert(stored.end(), std::make_move_iterator(read.begin()), std::make_move_iterator(read.end()));
  if (store == simStore && reader.counts() && reader.counts()->all > 0)
    simRoom_ = "SIM: " + std::to_string(reader.counts()->used) + " of " +
               std::to_string(reader.counts()->all) + " used";
  if (reader.problem().empty())
    return !kept ||
           fail("messages in " + std::string{store} + ": the handset lists a message that it has removed");
  if (reader.stalled()) stalled_ = reader.problem();
  return fail(reader.problem());
}

Listing<Message> AtHandset::listStore(std::string_view store) {
  if (!channel_) return {{}, fail(notOpen)};
  std::vector<StoredPdu> stored;
  bool complete = readStore(store, stored);
  const std::vector<std::string>& stores = dialect_->messageStores;
  const bool reports = store != simStore && settings_.value(reportKey) == "yes" &&
                       std::ranges::find(stores, reportStore) != stores.end();
  if (reports) complete = readStore(reportStore, stored) && complete;
  return {joinedMessages(stored, joinLimit_), complete};
}

Listing<Message> AtHandset::simReceived() {
  endReading();
  simRoom_.clear();
  Listing<Message> all = listStore(simStore);
  Listing<Message> received{{}, all.complete};
  simOutgoing_ = Listing<Message>{{}, all.complete};
  for (Message& message : all.items) {
    const bool outgoing = message.status == phonelink::statusOutgoing;
    (outgoing ? simOutgoing_->items : received.items).push_back(std::move(message));
  }
  if (channel_) handedOver_.take(*channel_);
  handedOver_.appendTo(received.items, 0, joinLimit_);
  return received;
}

// Listing takes long, and whoever wants one half of the store wants the other one too.
Listing<Message> AtHandset::simOutgoing() {
  if (!simOutgoing_) simReceived();
  return *std::exchange(simOutgoing_, std::nullopt);
}

// What lies in the phone alone, or all that the handset has where it does not tell its stores apart.
std::string AtHandset::phoneStore() const {
  const std::vector<std::string>& stores = dialect_->messageStores;
  const auto offers = [&stores](std::string_view name) {
    return std::ranges::find(stores, name) != stores.end();
  };
  const bool both = offers(bothStores) && !offers(simStore) && !offers(phoneMemory);
  return std::string{both ? bothStores : phoneMemory};
}

Listing<Message> AtHandset::phoneMessages() {
  if (!channel_) return {{}, fail(notOpen)};
  if (!phone_) {
    phone_ = listStore(phoneStore());
    const std::size_t before = handedOver_.all().size();
    handedOver_.take(*channel_);
    // What came while this was listed is in no list yet.
    handedOver_.appendTo(phone_->items, before, joinLimit_);
  }
  return *phone_;
}

bool AtHandset::send(std::string_view number, std::string_view text) {
  if (!channel_) return fail(notOpen);
  endReading();
  const bool report = settings_.value(reportKey) == "yes";
  const std::optional<std::vector<SubmitPdu>> parts = submitPdus(number, text, reference_, report);
  if (!parts) return fail(dialledNumber(number) ? "the text is too long" : "this is no number to send to");
  if (parts->size() > 1) ++reference_;
  MessageSender sender{*channel_};
  std::vector<std::uint8_t> references;
  for (const SubmitPdu& part : *parts) {
    const std::optional<std::uint8_t> reference = sender.send(part);
    if (!reference) return fail(sender.problem());
    references.push_back(*reference);
  }
  if (report) sent_.add(std::string{number}, std::move(references));
  return true;
}

// Looks which messages the reports are about that have come since the last time.
void AtHandset::settleReports() {
  channel_->listen();
  handedOver_.take(*channel_);
  const auto settle = [this](const Pdu& report) {
    if (std::string words = sent_.settle(report); !words.empty())
      deliveries_.insert(deliveries_.begin(), std::move(words));
  };
  for (; settled_ < handedOver_.all().size(); ++settled_) settle(decodePdu(handedOver_.all()[settled_].body));
  for (const std::string& line : channel_->takeStoredReports()) {
    const std::vector<Field> fields = fieldsOf(std::string_view{line}.substr(line.find(':') + 1));
    const std::optional<int> index = fields.size() > 1 ? numberOf(fields[1].text) : std::nullopt;
    if (!index) continue;
    MessageReader reader{*channel_, clock_, *dialect_};
    if (const auto stored = reader.readPlace(fields[0].text, *index)) settle(stored->pdu);
  }
}

std::string AtHandset::nextDelivery() {
  if (!channel_) return {};
  if (deliveries_.empty()) settleReports();
  if (deliveries_.empty()) return {};
  std::string words = std::move(deliveries_.back());
  deliveries_.pop_back();
  return words;
}

bool AtHandset::remove(const Message& message) {
  if (!channel_) return fail(notOpen);
  endReading();
  MessageReader reader{*channel_, clock_, *dialect_};
  if (!reader.remove(message.places)) return fail(reader.problem());
  removed_.insert(removed_.end(), message.places.begin(), message.places.end());
  settleReports();  // before what has come is counted anew
  handedOver_.forget(message.places);
  settled_ = handedOver_.all().size();
  return true;
}

bool AtHandset::initPhonebook() {
  if (!channel_) return fail(notOpen);
  PhonebookReader reader{*channel_, clock_, *dialect_};
  return reader.select(simStore) || (!channel_->gone() && reader.select(phoneMemory)) ||
         fail(reader.problem());
}

Listing<Contact> AtHandset::listContacts(std::string_view store) {
  if (!channel_) return {{}, fail(notOpen)};
  PhonebookReader reader{*channel_, clock_, *dialect_};
  Listing<Contact> contacts = reader.read(store);
  if (!contacts.complete) fail(reader.problem());
  return contacts;
}

Listing<Contact> AtHandset::simContacts() {
  return listContacts(simStore);
}

Listing<Contact> AtHandset::phoneContacts() {
  return listContacts(phoneMemory);
}

}  // namespace handset::at
