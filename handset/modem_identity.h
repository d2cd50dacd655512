#pragma once

#include <optional>
#include <string>

#include "handset/at/byte_stream.h"

namespace handset {

// What a modem says of itself; a text that it does not give is empty. Printable ASCII.
struct ModemIdentity {
  std::string manufacturer;
  std::string model;
  std::string wanted;  // what the SIM asks a person for, as in "SIM PIN"
};

// Asks whoever is at the other end of the line who it is; nullopt when nobody there answers as a modem does.
// Takes no longer than `milliseconds` in all.
std::optional<ModemIdentity> askIdentity(at::ByteStream& line, at::Clock& clock, int milliseconds);

}  // namespace handset
