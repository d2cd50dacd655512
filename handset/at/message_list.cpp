#include "handset/at/message_list.h"

#include <algorithm>
#include <optional>

#include "handset/at/fields.h"
#include "handset/at/hex.h"
#include "phonelink/entry_layouts.h"

namespace handset::at {
namespace {

constexpr std::string_view prefix = "+CMGL:";
constexpr std::string_view singlePrefix = "+CMGR:";

struct Header {
  int index = -1;       // -1: not said
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
  header.index = numberAt(0);
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

// Of the lines from `i` up to the next header the first that can be a message, else the first; empty when
// there is none. `i` is behind them afterwards.
std::string_view messageBehind(const std::vector<std::string>& lines, std::size_t& i,
                               std::string_view header) {
  std::optional<std::string_view> hex;
  std::string_view other;
  for (; i < lines.size() && !lines[i].starts_with(header); ++i) {
    const std::string_view line = withoutQuotes(lines[i]);
    if (!hex && isHex(line)) hex = line;
    if (other.empty()) other = line;
  }
  return hex.value_or(other);
}

StoredPdu storedPdu(const Header& header, std::string_view hex) {
  StoredPdu stored;
  stored.hex = hex;
  stored.pdu = decodePdu(hex);
  stored.status = statusOf(header.storeState, stored.pdu.kind);
  stored.index = header.index;
  return stored;
}

}  // namespace

std::vector<StoredPdu> messagesIn(const std::vector<std::string>& lines) {
  std::vector<StoredPdu> messages;
  for (std::size_t i = 0; i < lines.size();) {
    const std::optional<std::string_view> values = valueOf(lines[i], prefix);
    ++i;
    if (values) messages.push_back(storedPdu(headerOf(*values), messageBehind(lines, i, prefix)));
  }
  return messages;
}

std::optional<StoredPdu> messageAt(int index, const std::vector<std::string>& lines) {
  for (std::size_t i = 0; i < lines.size();) {
    const std::optional<std::string_view> values = valueOf(lines[i], singlePrefix);
    ++i;
    if (!values) continue;
    const int state = numberOf(fieldsOf(*values).front().text).value_or(-1);
    const std::string_view hex = messageBehind(lines, i, singlePrefix);
    // A place that holds nothing may be answered with a header alone.
    if (!hex.empty()) return storedPdu({index, state <= 3 ? state : -1}, hex);
  }
  return std::nullopt;
}

}  // namespace handset::at
