#pragma once

#include <cstdint>
#include <string>

namespace store {

// One message in memory. Owned by the folder table that holds it; texts are UTF-8 of any length.
struct SmsRecord {
  std::string Content;      // the message text
  std::string Time;         // as the handset gave it (14 characters) or as stored ("2005/01/02  09:05:07")
  std::string Phone;        // the other party: sender of a received message, receiver of a sent one
  std::int32_t Index = -1;  // storage number in the handset, or the number read from the store

  bool operator==(const SmsRecord&) const = default;
};

}  // namespace store
