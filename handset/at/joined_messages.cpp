#include "handset/at/joined_messages.h"

#include <algorithm>
#include <map>
#include <tuple>

#include "phonelink/entry_layouts.h"
#include "text/unicode.h"

namespace handset::at {
namespace {

using Places = std::vector<std::size_t>;  // in the store

// What the parts of one text have in common.
using Key = std::tuple<std::string, std::uint16_t, std::uint8_t, bool>;

Message messageOf(const StoredPdu& stored, std::string text) {
  return {stored.pdu.number, stored.pdu.time, std::move(text), stored.status, stored.storageNumber};
}

Message aloneMessage(const StoredPdu& stored) {
  return messageOf(stored, textOf(stored.pdu, stored.hex));
}

bool isPart(const StoredPdu& stored) {
  return stored.pdu.part && (stored.pdu.kind == PduKind::deliver || stored.pdu.kind == PduKind::submit);
}

// Places of the parts that go together, in the order of the parts.
std::vector<Places> groupsOf(std::span<const StoredPdu> stored) {
  std::map<Key, std::map<std::uint8_t, Places>> parts;
  for (std::size_t i = 0; i < stored.size(); ++i) {
    const StoredPdu& one = stored[i];
    if (!isPart(one)) continue;
    const bool outgoing = one.status == phonelink::statusOutgoing;
    parts[{one.pdu.number, one.pdu.part->reference, one.pdu.part->total, outgoing}][one.pdu.part->number]
        .push_back(i);
  }
  std::vector<Places> groups;
  for (const auto& [key, byNumber] : parts) {
    const std::size_t times = byNumber.begin()->second.size();
    const bool whole = byNumber.size() == std::get<std::uint8_t>(key);
    const bool regular =
        std::ranges::all_of(byNumber, [times](const auto& one) { return one.second.size() == times; });
    if (!regular || (times > 1 && !whole)) continue;
    for (std::size_t time = 0; time < times; ++time) {
      Places& group = groups.emplace_back();
      for (const auto& [number, places] : byNumber) group.push_back(places[time]);
    }
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
