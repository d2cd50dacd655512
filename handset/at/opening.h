#pragma once

#include <string>

#include "handset/at/byte_stream.h"
#include "handset/at/channel.h"
#include "handset/at/dialect.h"
#include "handset/at/port_settings.h"

// The steps before messages can be read. Each gives the reason why it failed, in words; empty: it did not.
namespace handset::at {

std::string problemOf(PortProblem problem, int port);

// Looks for a modem on a line that was just opened, learns its character sets and how long it takes to
// answer. A line on which nobody answers is given up after eleven seconds.
std::string findModem(Channel& channel, Dialect& dialect);

// Makes the modem ready for messages as PDUs and learns what it offers.
std::string prepareForMessages(Channel& channel, Clock& clock, PortSettings& settings, Dialect& dialect);

}  // namespace handset::at
