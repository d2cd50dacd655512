#include "handset/at/handed_over.h"

#include <algorithm>
#include <span>
#include <string_view>
#include <utility>

#include "handset/at/fields.h"
#include "handset/at/joined_messages.h"
#include "phonelink/entry_layouts.h"
#include "text/unicode.h"

namespace handset::at {
namespace {

// A message of text mode, as a handset hands it over before it is told not to.
Message textModeMessage(const HandedOver& message) {
  const std::string_view header = message.header;
  Message made;
  made.number = text::repairedUtf8(fieldsOf(header.substr(header.find(':') + 1)).front().text);
  made.text = text::repairedUtf8(message.body);
  made.status = phonelink::statusReceivedUnread;
  return made;
}

std::vector<Message> messagesOf(std::span<const HandedOver> handedOver, std::size_t limit) {
  std::vector<StoredPdu> pdus;
  std::vector<Message> ofTextMode;
  for (const HandedOver& one : handedOver) {
    if (companionOf(one.header) == Companion::any) {
      ofTextMode.push_back(textModeMessage(one));
    } else {
      pdus.push_back(
          {.pdu = decodePdu(one.body), .hex = one.body, .status = phonelink::statusReceivedUnread});
    }
  }
  std::vector<Message> messages = joinedMessages(pdus, limit);
  messages.insert(messages.end(), ofTextMode.begin(), ofTextMode.end());
  return messages;
}

}  // namespace

void HandedOverMessages::take(Channel& channel) {
  for (HandedOver& message : channel.takeHandedOver())
    if (all_.size() < Channel::mostHandedOver && std::ranges::find(all_, message) == all_.end())
      all_.push_back(std::move(message));
}

void HandedOverMessages::appendTo(std::vector<Message>& messages, std::size_t from, std::size_t limit) const {
  for (Message& made : messagesOf(std::span{all_}.subspan(from), limit)) {
    // Some handsets store it all the same.
    const auto same = [&made](const Message& one) {
      return one.number == made.number && one.time == made.time && one.text == made.text;
    };
    if (std::ranges::none_of(messages, same)) messages.push_back(std::move(made));
  }
}

void HandedOverMessages::forget(std::span<const Place> removed) {
  std::erase_if(all_, [&removed](const HandedOver& one) {
    return std::ranges::find(removed, one.body, &Place::content) != removed.end();
  });
}

}  // namespace handset::at
