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

EXPORTED int zelCloseSIM() {
  note("zelCloseSIM");
  return 1;
}

EXPORTED int zelUnicode(int on) {
  note(on == 1 ? "zelUnicode(1)" : "zelUnicode(?)");
  return script.unicodeResult;
}
