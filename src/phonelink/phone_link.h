#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
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

  std::vector<store::SmsRecord> receivedMessages();
  std::vector<store::SmsRecord> outgoingMessages();
  std::vector<HandsetMessage> handsetMessages();

  // Hands one message to the handset, unless number or text cannot cross the boundary whole. `wide`: as
  // 16-bit characters.
  SendResult send(const std::string& number, const std::string& text, bool wide);

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

  // What the library says, in one line.
  static std::string words(Say say);
  // Lets the library fill a zeroed buffer.
  static Entries fill(Read read, std::size_t entrySize);
  // The same for a phonebook buffer of `size` bytes with its head.
  static Entries fillContacts(Read read, std::size_t size, std::size_t entrySize);
  std::vector<store::SmsRecord> messages(Read read);

  const text::CodePage& codePage_;
  EntryPoints points_;
  bool bound_ = false;
  bool wideTexts_ = false;
};

}  // namespace phonelink
