#pragma once

#include <cstddef>

// What the scripted phone-link library answers and what it has been asked; shared by the library and the
// tests, so only plain memory.
struct ScriptedLink {
  int openResult = 1, initResult = 1, unicodeResult = 0, phonebookResult = 1;
  // The counts returned; they may differ from what stands in the buffers.
  int receivedResult = 0, senderResult = 0, handsetResult = 0, contactResult = 0, wideContactResult = 0;
  unsigned char received[1000 * 212] = {}, sender[1000 * 212] = {}, handset[1000 * 214] = {};
  unsigned char contacts[40000] = {}, wideContacts[4 + 1000 * 2836] = {};
  char unreachable[32] = "";           // sending to this number fails
  unsigned char sent[100 * 212] = {};  // what was handed over to be sent, one entry after the other
  int sentCount = 0;
  void* dialog = nullptr;  // its button `pressed` is pressed while a message is sent
  unsigned pressed = 0;
  char log[1 << 16] = {};  // the calls in order, each followed by a space
};
