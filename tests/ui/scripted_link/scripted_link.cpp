#include "scripted_link.h"

#include <windows.h>

#include <cstdio>
#include <cstring>

namespace {

ScriptedLink script;

void note(const char* call) {
  const std::size_t length = std::strlen(script.log);
  std::snprintf(script.log + length, sizeof script.log - length, "%s ", call);
}

}  // namespace

#define EXPORTED extern "C" __declspec(dllexport)
#define ANSWERS(name, parameters, result, act) \
  EXPORTED int name parameters {               \
    note(#name);                               \
    act;                                       \
    return result;                             \
  }
#define FILLS(name, buffer, result) \
  ANSWERS(name, (void* taken), script.result, std::memcpy(taken, script.buffer, sizeof(script.buffer)))

FILLS(zelGetReceiverSMS, received, receivedResult)
FILLS(zelGetSenderSMS, sender, senderResult)
FILLS(zelGetHandSetSMS, handset, handsetResult)
FILLS(zelGetPB, contacts, contactResult)
FILLS(zelGetPB_KOVA, wideContacts, wideContactResult)
ANSWERS(zelInitSMS, (), script.initResult, )
ANSWERS(zelInitPB, (), script.phonebookResult, )
ANSWERS(zelCloseSIM, (), 1, )
ANSWERS(zelUnicode, (int on), script.unicodeResult, note(on == 1 ? "on" : "off"))

EXPORTED ScriptedLink* scriptedLink() {
  return &script;
}

EXPORTED int zelOpenSIM(int port, int baudRate) {
  char call[64];
  std::snprintf(call, sizeof call, "zelOpenSIM(%d,%d)", port, baudRate);
  note(call);
  return script.openResult;
}

// Takes away the last received message, whichever is asked for.
EXPORTED int zelRemoveSMS(const void* entry) {
  if (std::strcmp(static_cast<const char*>(entry) + 16, script.unreachable) == 0) return 0;
  --script.receivedResult;
  return 1;
}

EXPORTED int zelSendSMS(void* entry) {
  note("zelSendSMS");
  if (script.sentCount < 100) std::memcpy(script.sent + 212 * script.sentCount++, entry, 212);
  if (script.dialog && script.sentCount < 9)
    SendMessageW(static_cast<HWND>(script.dialog), WM_COMMAND, script.pressed, 0);
  return std::strcmp(static_cast<const char*>(entry) + 16, script.unreachable) == 0 ? -1 : 1;
}
