#pragma once

#include <string>
#include <string_view>

namespace handset::at {

// Whether sent messages ask for a report of their delivery: "yes".
inline constexpr std::string_view reportKey = "report";

// What a person has laid down for the port, looked up anew each time. Owned by whoever made the handset.
class PortSettings {
 public:
  virtual ~PortSettings() = default;

  // Empty when there is no such key.
  virtual std::string value(std::string_view key) = 0;
  // An empty value takes the key away. Whether it was kept, value() tells.
  virtual void setValue(std::string_view key, std::string_view value) = 0;
};

}  // namespace handset::at
