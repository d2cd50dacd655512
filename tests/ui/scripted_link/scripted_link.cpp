#include "scripted_link.h"

#include <cstdio>
#include <cstring>

namespace {

ScriptedLink script;

void note(const char* call) {
  const int room = static_cast<int>(sizeof script.log - script.logLength);
  const int written =
      std::snprintf(script.log + script.logLength, static_cast<std::size_t>(room), "%s ", call);
  if (written > 0 && written < room) script.logLength += static_cast<std::size_t>(written);
}

}  // namespace

#define EXPORTED extern "C" __declspec(dllexport)

EXPORTED ScriptedLink* scriptedLink() {
  return &script;
}

EXPORTED int zelOpenSIM(int port, int baudRate) {
  char call[64];
  std::snprintf(call, sizeof call, "zelOpenSIM(%d,%d)", port, baudRate);
  note(call);
  return script.openResult;
}

EXPORTED int zelInitSMS() {
  note("zelInitSMS");
  return script.initResult;
}

EXPORTED int zelGetReceiverSMS(void* entries) {
  note("zelGetReceiverSMS");
  std::memcpy(entries, script.received, sizeof script.received);
  return script.receivedResult;
}

EXPORTED int zelGetSenderSMS(void* entries) {
  note("zelGetSenderSMS");
  std::memcpy(entries, script.sender, sizeof script.sender);
  return script.senderResult;
}

EXPORTED int zelGetHandSetSMS(void* entries) {
  note("zelGetHandSetSMS");
  std::memcpy(entries, script.handset, sizeof script.handset);
  return script.handsetResult;
}

EXPORTED int zelSendSMS(void* entry) {
  note("zelSendSMS");
  if (script.sentCount < 100) std::memcpy(script.sent + 212 * script.sentCount++, entry, 212);
  return std::strcmp(static_cast<const char*>(entry) + 16, script.unreachable) == 0 ? -1 : 1;
}

EXPORTED int zelInitPB() {
  note("zelInitPB");
  return script.phonebookResult;
}

EXPORTED int zelGetPB(void* buffer) {
  note("zelGetPB");
  std::memcpy(buffer, script.contacts, sizeof script.contacts);
  return script.contactResult;
}

EXPORTED int zelGetPB_KOVA(void* buffer) {
  note("zelGetPB_KOVA");
  std::memcpy(buffer, script.wideContacts, sizeof script.wideContacts);
  return script.wideContactResult;
}

EXPORTED int zelCloseSIM() {
  note("zelCloseSIM");
  return 1;
}

EXPORTED int zelUnicode(int on) {
  note(on == 1 ? "zelUnicode(1)" : "zelUnicode(?)");
  return script.unicodeResult;
}
