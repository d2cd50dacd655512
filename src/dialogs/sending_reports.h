#pragma once

#include <string>

#include "dialogs/compose_services.h"
#include "dialogs/outgoing.h"

// How the person is told what becomes of a text that is sent.
namespace dialogs {

// Sending with these services; its progress is shown in the status bar.
Outgoing outgoingWith(const ComposeServices& services);

// What became of one message: "Sent", or that it was not and why.
std::string outcomeText(const Delivery& delivery);

// Who was not reached, for the status bar; empty when everybody was. Entries without text are nobody.
std::string notSentText(const Sending& sending);

}  // namespace dialogs
