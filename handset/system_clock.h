#pragma once

#include "handset/at/byte_stream.h"

namespace handset {

// The system's own time since it started.
class SystemClock : public at::Clock {
 public:
  std::int64_t milliseconds() override;
  void sleep(int milliseconds) override;
};

}  // namespace handset
