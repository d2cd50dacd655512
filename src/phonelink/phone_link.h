#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "phonelink/entry_points.h"
#include "store/sms_record.h"
#include "text/code_page.h"

namespace phonelink {

inline constexpr int baudRate = 115200;

// A message of the handset's own memory with what the handset says of it.
struct HandsetMessage {
  store::SmsRecord record;
  std::uint16_t status = 0;
};

// One entry of a phonebook.
struct Contact {
  std::string name;
  std::string number;
};

// What becomes of a message that is to be sent. All but the first two are found without asking the handset.
enum class SendResult { sent, refused, notANumber, numberTooLong, textNotCarried };

// The bound phone-link library as the program uses it: every call is guarded, so that without a library, or
// with one that lacks a name, reads give no messages, opening fails and closing does nothing. What comes back
// is hostile: counts are clamped to the buffer and texts end at their field's end. Owned by the application;
// borrows the code page.
class PhoneLink {
 public:
  explicit PhoneLink(const text::CodePage& codePage) : codePage_(codePage) {}

  // Takes over the entry points of a loaded library and agrees on 16-bit texts if it offers them.
  void bind(const EntryPoints& points);
  // Forgets the library; it may then be unloaded.
  void unbind();
  bool isBound() const { return bound_; }
  bool wideTexts() const { return wideTexts_; }

  // zelOpenSIM, then zelInitSMS if that succeeded.
  bool open(int port);
  void close();

  // What the open handset says of itself, in one line; empty when it says nothing.
  std::string describe();
  // Why the last call failed, as the library says it, in one line; empty when it says nothing.
  std::string problem();

  // How full the card is, in one line; empty when the library does not tell.
  std::string room();

  // What a read has come to before it failed is there all the same; then takeReadProblem answers why, once.
  std::vector<store::SmsRecord> receivedMessages();
  std::vector<store::SmsRecord> outgoingMessages();
  std::vector<HandsetMessage> handsetMessages();

  std::string takeReadProblem() { return std::exchange(readProblem_, {}); }

  bool canRemove() const { return points_.zelRemoveSMS != nullptr; }
  // Takes a message of the last reading out of the handset. True also when it is one of several that a long
  // message takes, which goes with the last of them.
  bool remove(const store::SmsRecord& message);

  // Hands one message to the handset, unless number or text cannot cross the boundary whole. `wide`: as
  // 16-bit characters.
  SendResult send(const std::string& number, const std::string& text, bool wide);

  // Word of a message that was sent: that it has arrived, when, or that it will not. Each is given once.
  struct Delivered {
    std::string number;
    std::string words;
  };
  std::optional<Delivered> delivered();

  // The phonebooks, the standard one first; empty when they cannot be read.
  std::vector<Contact> contacts();

 private:
  using Read = int(PHONELINK_CALL*)(void*);
  using Say = int(PHONELINK_CALL*)(char*, int);

  // What the library filled, and how many entries are really there.
  struct Entries {
    std::vector<std::byte> bytes;
    std::size_t count = 0;
  };

  // What the library says, in UTF-8.
  static std::string said(Say say);
  static std::string inOneLine(std::string text);
  // How many entries a read has filled; a failed one says so with a negative number.
  std::size_t countOf(int answer, std::size_t most);
  // Lets the library fill a zeroed buffer.
  Entries fill(Read read, std::size_t entrySize);
  // The same for a phonebook buffer of `size` bytes with its head.
  Entries fillContacts(Read read, std::size_t size, std::size_t entrySize);
  std::vector<store::SmsRecord> messages(Read read);

  const text::CodePage& codePage_;
  EntryPoints points_;
  bool bound_ = false;
  bool wideTexts_ = false;
  std::string readProblem_;
};

}  // namespace phonelink
