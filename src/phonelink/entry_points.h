#pragma once

#include <type_traits>

#if defined(_WIN32)
#define PHONELINK_CALL __cdecl
#else
#define PHONELINK_CALL
#endif

namespace phonelink {

// The entry points of a phone-link library in the order in which they are bound. An entry that the library
// does not export stays empty. Buffers are those of entry_layouts.h, owned by the caller and zeroed.
struct EntryPoints {
  int(PHONELINK_CALL* zelOpenSIM)(int port, int baudRate) = nullptr;  // nonzero = opened
  int(PHONELINK_CALL* zelInitSMS)() = nullptr;                        // nonzero = ready
  void* zelGetSMS = nullptr;                                          // never called
  int(PHONELINK_CALL* zelGetHandSetSMS)(void* entries) = nullptr;     // number of 214-byte entries
  int(PHONELINK_CALL* zelGetSenderSMS)(void* entries) = nullptr;      // number of 212-byte entries
  int(PHONELINK_CALL* zelGetReceiverSMS)(void* entries) = nullptr;    // number of 212-byte entries
  int(PHONELINK_CALL* zelSendSMS)(void* entry) = nullptr;             // -1 = failed
  void* zelPutSMS = nullptr;                                          // never called
  int(PHONELINK_CALL* zelGetPB)(void* buffer) = nullptr;              // number of 40-byte entries
  int(PHONELINK_CALL* zelGetPB_KOVA)(void* buffer) = nullptr;         // number of 2836-byte entries
  int(PHONELINK_CALL* zelInitPB)() = nullptr;                         // nonzero = phonebook readable
  void* zelDeleteSMS = nullptr;                                       // never called
  int(PHONELINK_CALL* zelCloseSIM)() = nullptr;

  // Offered by some libraries beyond the thirteen.
  // Nonzero for 1 = texts may cross as UTF-16.
  int(PHONELINK_CALL* zelUnicode)(int on) = nullptr;
  // Who the opened handset is: UTF-8, ended within `size`; the length, 0 or less when there is nothing to
  // say.
  int(PHONELINK_CALL* zelDescribe)(char* text, int size) = nullptr;
  // Why the last call failed, in the same way.
  int(PHONELINK_CALL* zelProblem)(char* text, int size) = nullptr;
  // The same for how full the card is, and for the next word of a message sent since opening.
  int(PHONELINK_CALL* zelRoom)(char* text, int size) = nullptr;
  int(PHONELINK_CALL* zelDelivered)(char* text, int size) = nullptr;  // "number TAB words"
  int(PHONELINK_CALL* zelRemoveSMS)(const void* entry) = nullptr;     // 212 bytes of a read; 1, 2 = agreed
};

// A library of the same word length agrees with this in every type. On 32 bits it also matters who takes the
// arguments off the stack: the caller.
static_assert(sizeof(int) == 4);
#if defined(__i386__) && defined(_WIN32)
static_assert(!std::is_same_v<decltype(EntryPoints::zelOpenSIM), int(__stdcall*)(int, int)>);
static_assert(!std::is_same_v<decltype(EntryPoints::zelSendSMS), int(__stdcall*)(void*)>);
#endif

// Fills every entry from `find`, which gives the address of an exported name or null.
template <class Find>
EntryPoints bindEntryPoints(Find&& find) {
  EntryPoints points;
  const auto bind = [&find](auto& point, const char* name) {
    point = reinterpret_cast<std::remove_reference_t<decltype(point)>>(find(name));
  };
  bind(points.zelOpenSIM, "zelOpenSIM");
  bind(points.zelInitSMS, "zelInitSMS");
  bind(points.zelGetSMS, "zelGetSMS");
  bind(points.zelGetHandSetSMS, "zelGetHandSetSMS");
  bind(points.zelGetSenderSMS, "zelGetSenderSMS");
  bind(points.zelGetReceiverSMS, "zelGetReceiverSMS");
  bind(points.zelSendSMS, "zelSendSMS");
  bind(points.zelPutSMS, "zelPutSMS");
  bind(points.zelGetPB, "zelGetPB");
  bind(points.zelGetPB_KOVA, "zelGetPB_KOVA");
  bind(points.zelInitPB, "zelInitPB");
  bind(points.zelDeleteSMS, "zelDeleteSMS");
  bind(points.zelCloseSIM, "zelCloseSIM");
  bind(points.zelUnicode, "zelUnicode");
  bind(points.zelDescribe, "zelDescribe");
  bind(points.zelProblem, "zelProblem");
  bind(points.zelRoom, "zelRoom");
  bind(points.zelDelivered, "zelDelivered");
  bind(points.zelRemoveSMS, "zelRemoveSMS");
  return points;
}

}  // namespace phonelink
