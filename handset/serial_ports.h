#pragma once

#include <string>
#include <vector>

namespace handset {

// One serial port that this machine knows of. Texts as the system gives them.
struct SerialPortEntry {
  int number = 0;            // the n of COMn
  std::wstring description;  // as the device manager names it, or else the driver's name for it
};

// In the order of their numbers; none twice. Only ports named COMn: settings can name no other.
std::vector<SerialPortEntry> serialPorts();

}  // namespace handset
