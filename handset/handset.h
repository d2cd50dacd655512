#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace handset {

// Where a message, or a part of a long one, lay when it was listed, and what lay there.
struct Place {
  std::string store;  // in the handset's words; empty: in none
  int index = -1;     // -1: the handset did not say
  std::string content;

  bool operator==(const Place&) const = default;
};

// One message as a handset keeps it. Texts are UTF-8 of any length; what does not fit an entry is the
// library's business.
struct Message {
  std::string number;              // the other party, as the handset writes it
  std::string time;                // yyMMddhhmmss in local time and two characters of zone; may be empty
  std::string text;                // line breaks are LF
  std::uint16_t status = 0;        // as in the handset entries: 1 read, 3 unread, 7 outgoing
  std::int16_t storageNumber = 0;  // its place in the store that it was read from
  std::vector<Place> places = {};  // of all its parts

  bool operator==(const Message&) const = default;
};

struct Contact {
  std::string name;  // UTF-8
  std::string number;

  bool operator==(const Contact&) const = default;
};

// What a read has given. Where it failed, what came before is there all the same.
template <typename Item>
struct Listing {
  std::vector<Item> items;
  bool complete = true;
};

// One handset, simulated or real. Owned by the library for as long as it is loaded; opened and closed many
// times. Every call may block for as long as a slow port takes. Nothing but open(), offersUnicode() and
// lastProblem() is called while it is closed.
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

  // Who it is, in words that a person can read; ASCII. Takes a second at most, and what a slow one needs for
  // two answers.
  virtual std::string describe() = 0;

  virtual Listing<Message> simReceived() = 0;
  virtual Listing<Message> simOutgoing() = 0;
  // Everything in the phone's own memory, told apart by its status.
  virtual Listing<Message> phoneMessages() = 0;

  // True only when the handset has confirmed the message. An unknown outcome is false; never tries twice.
  virtual bool send(std::string_view number, std::string_view text) = 0;

  // Removes a message that a list has given, all its parts. True only when each was found at its place, as it
  // was listed, and is there no more.
  virtual bool remove(const Message& message) = 0;
  // How full the SIM is, in words, as of the last list; empty where that is not known.
  virtual std::string simRoom() = 0;

  // What became of a message that was sent since the link was opened: the number that it was sent to, a tab,
  // and what a report that has come says of it. Each once; empty when there is nothing new.
  virtual std::string nextDelivery() = 0;

  virtual bool initPhonebook() = 0;
  virtual Listing<Contact> simContacts() = 0;
  virtual Listing<Contact> phoneContacts() = 0;

  // Why the last operation that failed did so, in words a person can read, UTF-8; empty when nothing has
  // failed since the last open.
  virtual const std::string& lastProblem() const = 0;
};

}  // namespace handset
