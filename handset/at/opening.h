#pragma once

#include <string>

#include "handset/at/byte_stream.h"
#include "handset/at/channel.h"
#include "handset/at/dialect.h"

// The steps before messages can be read. Each gives the reason why it failed, in words; empty: it did not.
namespace handset::at {

std::string problemOf(PortProblem problem, int port);

// Looks for a modem on a line that was just opened; gives up within four seconds, finds one within
// four and a half.
std::string findModem(Channel& channel);

// Makes the modem ready for messages as PDUs and learns what it offers.
std::string prepareForMessages(Channel& channel, Clock& clock, Dialect& dialect);

}  // namespace handset::at
