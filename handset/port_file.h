#pragma once

#include <string>

#include "handset/at/port_settings.h"

namespace handset {

// Section [port] of port.ini, beside the library.
class PortFile : public at::PortSettings {
 public:
  std::string value(std::string_view key) override;
  void setValue(std::string_view key, std::string_view value) override;
};

}  // namespace handset
