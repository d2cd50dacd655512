#pragma once

#include <string>

#include "handset/at/byte_stream.h"

namespace modem_test {

// Opens a terminal device by its path, raw; a port number has no meaning here.
handset::at::OpenedPort openTerminal(const std::string& path);

class PosixClock : public handset::at::Clock {
 public:
  std::int64_t milliseconds() override;
  void sleep(int milliseconds) override;
};

}  // namespace modem_test
