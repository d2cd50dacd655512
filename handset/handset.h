#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace handset {

// One message as a handset keeps it. Texts are UTF-8 of any length; what does not fit an entry is the
// library's business.
struct Message {
  std::string number;              // the other party, as the handset writes it
  std::string time;                // yyMMddhhmmss in local time and two characters of zone; may be empty
  std::string text;                // line breaks are LF
  std::uint16_t status = 0;        // as in the handset entries: 1 read, 3 unread, 7 outgoing
  std::int16_t storageNumber = 0;  // its place in the store that it was read from

  bool operator==(const Message&) const = default;
};

struct Contact {
  std::string name;  // UTF-8
  std::string number;

  bool operator==(const Contact&) const = default;
};

// One handset, simulated or real. Owned by the library for as long as it is loaded; opened and closed many
// times. Every call may block for as long as a slow port takes. A list that could not be read is nullopt,
// which is not the same as an empty one. Nothing but open() and offersUnicode() is called while it is closed.
class Handset {
 public:
  virtual ~Handset() = default;

  // Port as in the program's settings, speed in bits per second. False: nobody there; nothing stays open.
  virtual bool open(int port, int baud) = 0;
  // Prepares messages for reading and sending. False: the handset answers but is not ready.
  virtual bool init() = 0;
  // Harmless when closed.
  virtual void close() = 0;

  // Whether texts beyond the system's code page come through; may be asked at any time.
  virtual bool offersUnicode() = 0;

  // Who it is, in words that a person can read; ASCII. A slow one takes a second at most.
  virtual std::string describe() = 0;

  virtual std::optional<std::vector<Message>> simReceived() = 0;
  virtual std::optional<std::vector<Message>> simOutgoing() = 0;
  // Everything in the phone's own memory, told apart by its status.
  virtual std::optional<std::vector<Message>> phoneMessages() = 0;

  // True only when the handset has confirmed the message. An unknown outcome is false; never tries twice.
  virtual bool send(std::string_view number, std::string_view text) = 0;

  virtual bool initPhonebook() = 0;
  virtual std::optional<std::vector<Contact>> simContacts() = 0;
  virtual std::optional<std::vector<Contact>> phoneContacts() = 0;
};

}  // namespace handset
