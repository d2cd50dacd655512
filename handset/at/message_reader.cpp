#include "handset/at/message_reader.h"

#include <algorithm>

#include "handset/at/fields.h"
#include "handset/at/message_list.h"

namespace handset::at {
namespace {

using Outcome = Answer::Outcome;

constexpr int invalidIndex = 321;
constexpr int mostPlaces = 1000;

// "used, all, ..." as a handset says it when a store is selected, or with the store's name before it.
std::optional<Counts> countsIn(const Answer& answer) {
  const std::optional<std::string_view> value = valueOf(answer.lines, "+CPMS:");
  if (!answer.ok() || !value) return std::nullopt;
  std::string_view list = *value;
  while (list.starts_with('(')) list.remove_prefix(1);
  const std::vector<Field> fields = fieldsOf(list);
  const std::size_t first = fields[0].quoted ? 1 : 0;
  const auto numberAt = [&fields](std::size_t at) {
    return at < fields.size() ? numberOf(fields[at].text) : std::nullopt;
  };
  const std::optional<int> used = numberAt(first);
  if (!used) return std::nullopt;
  return Counts{*used, numberAt(first + 1).value_or(0)};
}

bool isInvalidIndex(const FinalResult& result) {
  return result.family == FinalResult::Family::message && result.number == invalidIndex;
}

// How handsets answer the question what lies at a place where nothing does.
bool meansNothingThere(const FinalResult& result) {
  using enum FinalResult::Family;
  constexpr int unknownError = 500;
  return result.family == plain || isInvalidIndex(result) ||
         (result.family == message && result.number == unknownError) ||
         (result.family == equipment && (result.number == 21 || result.number == 22));
}

}  // namespace

bool sameMessage(const StoredPdu& found, const Place& listed) {
  if (found.hex == listed.content) return true;
  return found.pdu.kind != PduKind::undecodable && found.pdu == decodePdu(listed.content);
}

bool MessageReader::fail(const std::string& problem) {
  problem_ = "messages in " + store_ + ": " + problem;
  return false;
}

bool MessageReader::fail(const Answer& answer) {
  stalled_ = answer.outcome >= Outcome::timedOut;
  return fail(problemOf(answer));
}

// Only what is read and removed; where new messages go is left alone.
bool MessageReader::select(std::string_view store) {
  store_ = store;
  const Answer selection = at::select(channel_, clock_, "AT+CPMS=", "+CPMS:", store, dialect_.hexStrings);
  counts_ = countsIn(selection);
  return selection.ok() || fail(selection);
}

std::vector<StoredPdu> MessageReader::read(std::string_view store) {
  if (!select(store)) return {};
  Answer listing = channel_.command("AT+CMGL=4", "+CMGL:", listDeadline);
  // A message that has only been announced is none.
  if (!listing.ok() && !listing.lines.empty() && listing.lines.back().starts_with("+CMGL:"))
    listing.lines.pop_back();
  std::vector<StoredPdu> messages = messagesIn(listing.lines);
  const bool refused = listing.outcome == Outcome::refused && messages.empty();
  // A store that holds nothing is sometimes listed with an error.
  if (refused && (counts_ ? counts_->used == 0 : isInvalidIndex(listing.result))) return {};
  if (refused && !counts_) counts_ = countsIn(channel_.command("AT+CPMS?", "+CPMS:", simDeadline));
  if (refused && counts_ && !isSimTrouble(listing.result)) {
    messages = placeByPlace(problemOf(listing));
  } else if (!listing.ok()) {
    fail(listing);
  } else if (counts_ && messages.size() < static_cast<std::size_t>(counts_->used)) {
    fail("the handset counts " + std::to_string(counts_->used) + " and lists " +
         std::to_string(messages.size()));
  }
  for (StoredPdu& message : messages) message.store = store_;
  return messages;
}

std::vector<StoredPdu> MessageReader::placeByPlace(const std::string& whyNotListed) {
  std::vector<StoredPdu> messages;
  const auto used = static_cast<std::size_t>(counts_->used);
  const std::int64_t deadline = clock_.milliseconds() + listDeadline;
  std::int64_t patience = clock_.milliseconds() + Channel::longestSilence;
  // Some count from 0.
  for (int place = 0; place <= std::min(counts_->all, mostPlaces) && messages.size() < used; ++place) {
    if (clock_.milliseconds() >= std::min(deadline, patience)) break;
    const Answer answer = channel_.command("AT+CMGR=" + std::to_string(place), "+CMGR:", simDeadline);
    if (answer.outcome >= Outcome::timedOut) {
      fail(answer);
      return messages;
    }
    if (!answer.ok()) continue;
    if (std::optional<StoredPdu> message = messageAt(place, answer.lines)) {
      messages.push_back(std::move(*message));
      patience = clock_.milliseconds() + Channel::longestSilence;
    }
  }
  if (messages.size() < used) fail(whyNotListed);
  return messages;
}

std::optional<StoredPdu> MessageReader::readPlace(std::string_view store, int index) {
  if (!select(store)) return std::nullopt;
  const Answer answer = channel_.command("AT+CMGR=" + std::to_string(index), "+CMGR:", simDeadline);
  return answer.ok() ? messageAt(index, answer.lines) : std::nullopt;
}

// What lies at a part's place now.
MessageReader::Found MessageReader::look(const Place& part) {
  const Answer answer = channel_.command("AT+CMGR=" + std::to_string(part.index), "+CMGR:", simDeadline);
  if (answer.outcome == Outcome::refused && meansNothingThere(answer.result)) return Found::other;
  if (!answer.ok()) {
    fail(answer);
    return Found::unknown;
  }
  const std::optional<StoredPdu> found = messageAt(part.index, answer.lines);
  return found && sameMessage(*found, part) ? Found::same : Found::other;
}

bool MessageReader::removePart(const Place& part) {
  const Answer removal = channel_.command("AT+CMGD=" + std::to_string(part.index), {}, simDeadline);
  if (!removal.ok()) return fail(removal);
  const Found left = look(part);
  if (left == Found::same) return fail("the handset keeps what it has said to remove");
  return left == Found::other;
}

bool MessageReader::remove(std::span<const Place> parts) {
  constexpr const char* moved = "the message is not at its place any more";
  if (parts.empty() || parts.front().store.empty() || !select(parts.front().store))
    return !problem_.empty() ? false : fail("the handset has not stored it");
  const auto isThere = [this, &parts](const Place& part) {
    if (part.index < 0 || part.store != parts.front().store) return fail("its place is not known");
    const Found found = look(part);
    return found == Found::same || (found == Found::other && fail(moved));
  };
  std::vector<Place> last{parts.begin(), parts.end()};
  std::ranges::sort(last, std::ranges::greater{}, &Place::index);
  // Half a message is worse than a full store: nothing goes unless all of it is there.
  if (last.size() > 1 && !std::ranges::all_of(last, isThere)) return false;
  // From the last place on, as some handsets move up what lies behind a removed one.
  return std::ranges::all_of(last, [&](const Place& part) { return isThere(part) && removePart(part); });
}

}  // namespace handset::at
