#pragma once

#include <optional>
#include <string>

#include "handset/at/byte_stream.h"

namespace handset::at {

// What a modem says of itself; a text that it does not give is empty. Printable ASCII.
struct ModemIdentity {
  std::string manufacturer;
  std::string model;
  std::string wanted;  // what the SIM asks a person for, as in "SIM PIN"
};

class Channel;

// "Manufacturer model", or what there is of it.
std::string nameOf(const ModemIdentity& identity);

// Asks a modem for its name, each half for no longer than `milliseconds`. False when it has stopped
// answering.
bool askName(Channel& channel, int milliseconds, ModemIdentity& identity);

// Asks whoever is at the other end of the line who it is; nullopt when nobody there answers as a modem does,
// which takes eleven seconds to be sure of.
std::optional<ModemIdentity> askIdentity(ByteStream& line, Clock& clock);

}  // namespace handset::at
