#pragma once

#include <cstddef>

// What the scripted phone-link library answers and what it has been asked; shared by the library and the
// tests, so only plain memory.
struct ScriptedLink {
  int openResult = 1;
  int initResult = 1;
  int unicodeResult = 0;
  int receivedResult = 0;  // the count returned; may differ from what stands in the buffer
  int senderResult = 0;
  int handsetResult = 0;
  unsigned char received[1000 * 212] = {};
  unsigned char sender[1000 * 212] = {};
  unsigned char handset[1000 * 214] = {};

  int phonebookResult = 1;
  int contactResult = 0;
  int wideContactResult = 0;
  unsigned char contacts[40000] = {};
  unsigned char wideContacts[4 + 1000 * 2836] = {};
  char unreachable[32] = "";           // sending to this number fails
  unsigned char sent[100 * 212] = {};  // what was handed over to be sent, one entry after the other
  int sentCount = 0;

  char log[1 << 16] = {};  // the calls in order, each followed by a blank
  std::size_t logLength = 0;
};
