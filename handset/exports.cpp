#include <algorithm>
#include <cstddef>
#include <memory>
#include <span>
#include <string_view>

#include "handset/at/at_handset.h"
#include "handset/library.h"
#include "handset/port_file.h"
#include "handset/serial_port.h"
#include "handset/simulated/simulated_handset.h"
#include "handset/system_clock.h"
#include "handset/windows_environment.h"
#include "text/system.h"

// The functions that the program binds by name. Buffers are the program's, of the sizes that the entry
// layouts give; a read that fails after n entries answers -1 - n; no exception leaves a function. Calls come
// from one thread at a time.

namespace {

constexpr int failed = 0;
constexpr int notSent = -1;
constexpr int nothingRead = -1;

// Puts a text into the caller's `size` bytes with a NUL behind it; the bytes of it, whole characters only.
int copied(std::string_view text, char* buffer, int size) {
  if (buffer == nullptr || size <= 0) return 0;
  std::size_t length = std::min(text.size(), static_cast<std::size_t>(size) - 1);
  while (length < text.size() && length > 0 && (static_cast<unsigned char>(text[length]) & 0xC0U) == 0x80U)
    --length;
  text.copy(buffer, length);
  buffer[length] = '\0';
  return static_cast<int>(length);
}

// Made by the first call, gone with the library.
handset::Library& library() {
  static handset::SystemClock clock;
  static handset::PortFile settings;
  static handset::Library instance{
      std::make_unique<handset::SimulatedHandset>(std::make_unique<handset::WindowsEnvironment>()),
      std::make_unique<handset::at::AtHandset>(handset::openSerialPort, clock, settings),
      std::make_unique<text::SystemCodePage>()};
  return instance;
}

template <typename Call>
int guarded(int result, Call call) noexcept {
  try {
    return call(library());
  } catch (...) {
    return result;
  }
}

// One of the reads that fill a buffer of `size` bytes.
int read(int (handset::Library::*operation)(std::span<std::byte>), void* buffer, std::size_t size) noexcept {
  if (buffer == nullptr) return 0;
  return guarded(nothingRead, [&](handset::Library& l) {
    return (l.*operation)({static_cast<std::byte*>(buffer), size});
  });
}

constexpr std::size_t messagesSize = phonelink::maxEntries * phonelink::messageEntrySize;
constexpr std::size_t handsetMessagesSize = phonelink::maxEntries * phonelink::handsetEntrySize;

}  // namespace

#define PHONE_LINK extern "C" __declspec(dllexport) int __cdecl

PHONE_LINK zelOpenSIM(int port, int baud) {
  return guarded(failed, [=](handset::Library& l) { return l.open(port, baud); });
}

PHONE_LINK zelInitSMS() {
  return guarded(failed, [](handset::Library& l) { return l.init(); });
}

PHONE_LINK zelCloseSIM() {
  return guarded(failed, [](handset::Library& l) {
    l.close();
    return 1;
  });
}

PHONE_LINK zelUnicode(int on) {
  return guarded(failed, [=](handset::Library& l) { return l.setUnicode(on); });
}

PHONE_LINK zelDescribe(char* text, int size) {
  if (text == nullptr || size <= 0) return failed;
  return guarded(failed, [=](handset::Library& l) {
    return l.describe({text, static_cast<std::size_t>(size)});
  });
}

PHONE_LINK zelGetReceiverSMS(void* entries) {
  return read(&handset::Library::receivedMessages, entries, messagesSize);
}

PHONE_LINK zelGetSenderSMS(void* entries) {
  return read(&handset::Library::outgoingMessages, entries, messagesSize);
}

PHONE_LINK zelGetHandSetSMS(void* entries) {
  return read(&handset::Library::handsetMessages, entries, handsetMessagesSize);
}

PHONE_LINK zelSendSMS(const void* entry) {
  if (entry == nullptr) return notSent;
  return guarded(notSent, [=](handset::Library& l) {
    return l.send(phonelink::MessageBytes{static_cast<const std::byte*>(entry), phonelink::messageEntrySize});
  });
}

// Removes the message whose entry a read has given: 1 gone, 2 gone with the last of its other entries, 0 not.
PHONE_LINK zelRemoveSMS(const void* entry) {
  if (entry == nullptr) return failed;
  return guarded(failed, [=](handset::Library& l) {
    return l.remove(
        phonelink::MessageBytes{static_cast<const std::byte*>(entry), phonelink::messageEntrySize});
  });
}

// The last problem in words, UTF-8, as much as fits `size` bytes with a NUL; its length, 0 when there is
// none.
PHONE_LINK zelProblem(char* text, int size) {
  return guarded(0, [=](handset::Library& l) { return copied(l.problem(), text, size); });
}

// The same for how full the SIM is.
PHONE_LINK zelRoom(char* text, int size) {
  return guarded(0, [=](handset::Library& l) { return copied(l.room(), text, size); });
}

// The same for what became of a message that was sent since the link was opened: its number, a tab and words.
// Each once.
PHONE_LINK zelDelivered(char* text, int size) {
  return guarded(0, [=](handset::Library& l) { return copied(l.delivered(), text, size); });
}

PHONE_LINK zelInitPB() {
  return guarded(failed, [](handset::Library& l) { return l.initPhonebook(); });
}

PHONE_LINK zelGetPB(void* buffer) {
  return read(&handset::Library::contacts, buffer, phonelink::contactBufferSize);
}

PHONE_LINK zelGetPB_KOVA(void* buffer) {
  return read(&handset::Library::wideContacts, buffer, phonelink::wideContactBufferSize);
}

// Not offered: reading one message, storing one and deleting one. The names exist because programs bind them;
// the answers are those of a call that did nothing. The caller cleans up whatever it passes.
PHONE_LINK zelGetSMS() {
  return 0;
}
PHONE_LINK zelPutSMS() {
  return -1;
}
PHONE_LINK zelDeleteSMS() {
  return failed;
}
