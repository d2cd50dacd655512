#include "handset/at/joined_messages.h"

#include <algorithm>
#include <chrono>
#include <limits>
#include <map>
#include <tuple>
#include <utility>

#include "handset/at/hex.h"
#include "phonelink/entry_layouts.h"
#include "text/unicode.h"

namespace handset::at {
namespace {

using Places = std::vector<std::size_t>;  // in the store

// What the parts of one text have in common.
using Key = std::tuple<std::string, std::uint16_t, std::uint8_t, bool>;

Place placeOf(const StoredPdu& stored) {
  return {stored.store, stored.index, stored.hex};
}

Message messageOf(const StoredPdu& stored, std::string text) {
  constexpr int last = std::numeric_limits<std::int16_t>::max();
  const int number = stored.index < 0 || stored.index > last ? 0 : stored.index;
  return {.number = stored.pdu.number,
          .time = stored.pdu.time,
          .text = std::move(text),
          .status = stored.status,
          .storageNumber = static_cast<std::int16_t>(number),
          .places = {placeOf(stored)}};
}

bool isPart(const StoredPdu& stored) {
  return stored.pdu.part && (stored.pdu.kind == PduKind::deliver || stored.pdu.kind == PduKind::submit);
}

Message aloneMessage(const StoredPdu& stored) {
  std::string text = textOf(stored.pdu, stored.hex);
  if (const std::optional<PartOf>& part = stored.pdu.part; isPart(stored) && part->total > 1)
    text.insert(0, '(' + std::to_string(part->number) + '/' + std::to_string(part->total) + ") ");
  return messageOf(stored, std::move(text));
}

// Minutes since some day long ago, in the zone that the time names; 0 for a message without a time.
std::int64_t minutesOf(const std::string& time) {
  if (time.size() < 14) return 0;
  const auto two = [&time](std::size_t at) { return hexDigit(time[at]) * 10 + hexDigit(time[at + 1]); };
  const std::chrono::sys_days day{std::chrono::year{2000 + two(0)} / two(2) / two(4)};
  const bool behind = hexDigit(time[12]) >= 8;
  const int quarters = behind ? 80 - two(12) : two(12);
  const int minute = two(6) * 60 + two(8) - quarters * 15;
  return std::int64_t{day.time_since_epoch().count()} * 24 * 60 + minute;
}

// Parts by their number.
using Parts = std::map<std::uint8_t, Places>;

// Adds the groups that the parts make: one for each time that every part is there, or what there is of one.
void addGroups(const Parts& parts, std::size_t total, std::vector<Places>& groups) {
  const std::size_t times = parts.begin()->second.size();
  const bool regular =
      std::ranges::all_of(parts, [times](const auto& one) { return one.second.size() == times; });
  if (!regular || (times > 1 && parts.size() != total)) return;
  for (std::size_t time = 0; time < times; ++time) {
    Places& group = groups.emplace_back();
    for (const auto& [number, places] : parts) group.push_back(places[time]);
  }
}

// Places of the parts that go together, in the order of the parts.
std::vector<Places> groupsOf(std::span<const StoredPdu> stored) {
  std::map<Key, std::vector<std::pair<std::int64_t, std::size_t>>> alike;  // minute and place
  for (std::size_t i = 0; i < stored.size(); ++i) {
    const StoredPdu& one = stored[i];
    if (!isPart(one)) continue;
    const bool outgoing = one.status == phonelink::statusOutgoing;
    alike[{one.pdu.number, one.pdu.part->reference, one.pdu.part->total, outgoing}].emplace_back(
        minutesOf(one.pdu.time), i);
  }
  constexpr std::int64_t hour = 60;
  std::vector<Places> groups;
  for (auto& [key, parts] : alike) {
    std::ranges::sort(parts);
    Parts within;
    std::int64_t begin = parts.front().first;
    for (const auto& [minute, place] : parts) {
      if (minute - begin > hour) {
        addGroups(within, std::get<std::uint8_t>(key), groups);
        within.clear();
        begin = minute;
      }
      within[stored[place].pdu.part->number].push_back(place);
    }
    addGroups(within, std::get<std::uint8_t>(key), groups);
  }
  return groups;
}

std::vector<Message> messagesOf(std::span<const StoredPdu> stored, const Places& group, std::size_t limit) {
  std::vector<Message> messages;
  if (group.size() == stored[group.front()].pdu.part->total) {
    std::vector<UserData> parts;
    bool unread = false;
    for (const std::size_t place : group) {
      parts.push_back(stored[place].pdu.data);
      unread = unread || stored[place].status == phonelink::statusReceivedUnread;
    }
    std::string text = textOf(parts);
    if (text::utf16FromUtf8(text).size() <= limit) {
      messages.push_back(messageOf(stored[group.front()], std::move(text)));
      messages.front().places.clear();
      for (const std::size_t place : group) messages.front().places.push_back(placeOf(stored[place]));
      if (unread) messages.front().status = phonelink::statusReceivedUnread;
      return messages;
    }
  }
  for (const std::size_t place : group) messages.push_back(aloneMessage(stored[place]));
  return messages;
}

}  // namespace

std::vector<Message> joinedMessages(std::span<const StoredPdu> stored, std::size_t limit) {
  std::vector<bool> grouped(stored.size());
  std::map<std::size_t, Places> groupAt;  // by the place of the part that lay first
  for (Places& group : groupsOf(stored)) {
    for (const std::size_t place : group) grouped[place] = true;
    const std::size_t first = std::ranges::min(group);
    groupAt[first] = std::move(group);
  }
  std::vector<Message> messages;
  for (std::size_t i = 0; i < stored.size(); ++i) {
    if (!grouped[i]) messages.push_back(aloneMessage(stored[i]));
    const auto group = groupAt.find(i);
    if (group == groupAt.end()) continue;
    for (Message& message : messagesOf(stored, group->second, limit)) messages.push_back(std::move(message));
  }
  return messages;
}

}  // namespace handset::at
