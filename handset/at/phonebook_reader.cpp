#include "handset/at/phonebook_reader.h"

#include <algorithm>
#include <set>
#include <tuple>
#include <utility>

#include "handset/at/fields.h"

namespace handset::at {
namespace {

using Outcome = Answer::Outcome;

constexpr int entriesAtOnce = 100;
constexpr int mostPlaces = 10'000;
constexpr int wholeDeadline = 120'000;

struct NamedSet {
  std::string_view name;
  CharacterSet set;
};

// What loses least comes first.
constexpr NamedSet characterSets[] = {
    {"UCS2", CharacterSet::ucs2}, {"GSM", CharacterSet::gsm}, {"IRA", CharacterSet::ira}};

}  // namespace

bool PhonebookReader::fail(std::string problem) {
  problem_ = std::move(problem);
  return false;
}

bool PhonebookReader::select(std::string_view store) {
  const Answer answer = at::select(channel_, clock_, "AT+CPBS=", "+CPBS:", store, hexStrings_);
  return answer.ok() || fail("phonebook " + std::string{store} + ": " + problemOf(answer));
}

PhonebookReader::CurrentSet PhonebookReader::currentSet() {
  const Answer answer = channel_.command("AT+CSCS?", "+CSCS:", plainDeadline);
  const std::optional<std::string_view> value = valueOf(answer.lines, "+CSCS:");
  if (!answer.ok() || !value) return {};
  const std::vector<std::string> words = wordsOf(*value);
  if (words.empty()) return {};
  return {words.front(), value->find(words.front()) == value->npos};
}

bool PhonebookReader::setCharacterSet(std::string_view name) {
  return at::select(channel_, clock_, "AT+CSCS=", "+CSCS:", name, hexStrings_).ok();
}

void PhonebookReader::chooseCharacterSet() {
  for (const NamedSet& wanted : characterSets) {
    if (!Dialect::mayOffer(dialect_.characterSets, wanted.name) || !setCharacterSet(wanted.name)) continue;
    set_ = wanted.set;
    hexStrings_ = wanted.set == CharacterSet::ucs2 && currentSet().hex;
    return;
  }
}

Listing<Contact> PhonebookReader::read(std::string_view store) {
  const CurrentSet before = currentSet();
  hexStrings_ = before.hex;
  for (const NamedSet& known : characterSets)
    if (before.name == known.name) set_ = known.set;
  chooseCharacterSet();
  Listing<Contact> contacts{{}, select(store)};
  if (contacts.complete) contacts = readEntries(store);
  if (!channel_.gone()) setCharacterSet(before.name.empty() ? std::string_view{"GSM"} : before.name);
  return contacts;
}

std::optional<IndexRange> PhonebookReader::places() {
  const Answer range = channel_.command("AT+CPBR=?", "+CPBR:", simDeadline);
  if (const std::optional<IndexRange> found = rangeIn(range.lines); range.ok() && found) return found;
  const Answer capacity = channel_.command("AT+CPBS?", "+CPBS:", simDeadline);
  if (!capacity.ok()) return std::nullopt;
  return capacityIn(capacity.lines);
}

Listing<Contact> PhonebookReader::readEntries(std::string_view store) {
  const std::string name = "phonebook " + std::string{store} + ": ";
  const std::optional<IndexRange> range = places();
  if (!range) return {{}, fail(name + "its size is not known")};
  const std::int64_t deadline = clock_.milliseconds() + wholeDeadline;
  const int last = std::min(range->last, range->first + mostPlaces - 1);
  Listing<Contact> contacts;
  std::set<std::tuple<int, std::string, std::string>> seen;  // a handset may answer more than it is asked
  for (int from = range->first; from <= last; from += entriesAtOnce) {
    const int to = std::min(last, from + entriesAtOnce - 1);
    const std::int64_t left = std::min<std::int64_t>(phonebookDeadline, deadline - clock_.milliseconds());
    Answer answer;
    if (left > 0) {
      answer = channel_.command("AT+CPBR=" + std::to_string(from) + ',' + std::to_string(to),
                                "+CPBR:", static_cast<int>(left));
    }
    // Handsets refuse ranges that hold nothing; only without a SIM there is no reading at all.
    const bool failed = answer.outcome >= Outcome::timedOut || (!answer.ok() && isSimTrouble(answer.result));
    if (failed) contacts.complete = fail(name + problemOf(answer));
    for (PhonebookEntry& entry : entriesIn(answer.lines, set_, hexStrings_)) {
      if (!seen.insert({entry.index, entry.contact.name, entry.contact.number}).second) continue;
      contacts.items.push_back(std::move(entry.contact));
    }
    if (failed) break;
  }
  return contacts;
}

}  // namespace handset::at
