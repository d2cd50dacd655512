#include "handset/at/message_list.h"

#include <algorithm>
#include <limits>
#include <optional>

#include "handset/at/fields.h"
#include "handset/at/hex.h"
#include "phonelink/entry_layouts.h"

namespace handset::at {
namespace {

constexpr std::string_view prefix = "+CMGL:";

struct Header {
  int index = 0;        // 0: not said
  int storeState = -1;  // 0 unread, 1 read, 2 not sent, 3 sent; -1: not said
};

// Place, state, name, length; the name may be left out with its comma, and so may the place.
Header headerOf(std::string_view values) {
  const std::vector<Field> fields = fieldsOf(values);
  const auto numberAt = [&fields](std::size_t at) {
    return at < fields.size() ? numberOf(fields[at].text).value_or(-1) : -1;
  };
  const auto isState = [](int number) { return number >= 0 && number <= 3; };
  Header header;
  if (fields.size() == 2 && isState(numberAt(0)) && !isState(numberAt(1))) {
    header.storeState = numberAt(0);
    return header;
  }
  header.index = std::max(numberAt(0), 0);
  if (isState(numberAt(1))) header.storeState = numberAt(1);
  return header;
}

std::uint16_t statusOf(int storeState, PduKind kind) {
  if (storeState == 0) return phonelink::statusReceivedUnread;
  const bool outgoing = storeState < 0 ? kind == PduKind::submit : storeState >= 2;
  return outgoing ? phonelink::statusOutgoing : phonelink::statusReceivedRead;
}

std::string_view withoutQuotes(std::string_view line) {
  if (line.starts_with('"')) line.remove_prefix(1);
  if (line.ends_with('"')) line.remove_suffix(1);
  return trimmed(line);
}

StoredPdu storedPdu(const Header& header, std::string_view hex) {
  StoredPdu stored;
  stored.hex = hex;
  stored.pdu = decodePdu(hex);
  stored.status = statusOf(header.storeState, stored.pdu.kind);
  constexpr int last = std::numeric_limits<std::int16_t>::max();
  stored.storageNumber = static_cast<std::int16_t>(header.index <= last ? header.index : 0);
  return stored;
}

}  // namespace

std::vector<StoredPdu> messagesIn(const std::vector<std::string>& lines) {
  std::vector<StoredPdu> messages;
  for (std::size_t i = 0; i < lines.size();) {
    const std::optional<std::string_view> values = valueOf(lines[i], prefix);
    ++i;
    if (!values) continue;
    // Of the lines up to the next header the first that can be a message, else the first.
    std::optional<std::string_view> hex;
    std::string_view other;
    for (; i < lines.size() && !lines[i].starts_with(prefix); ++i) {
      const std::string_view line = withoutQuotes(lines[i]);
      if (!hex && isHex(line)) hex = line;
      if (other.empty()) other = line;
    }
    messages.push_back(storedPdu(headerOf(*values), hex.value_or(other)));
  }
  return messages;
}

}  // namespace handset::at
