#pragma once

#include "handset/at/byte_stream.h"

namespace handset {

// Opens a COM port of this machine, of any number from 1 up; at::OpenPort says how. A port that a wireless
// driver makes may take as long to open as the driver takes to reach the other side.
at::OpenedPort openSerialPort(int port, int baud);

}  // namespace handset
