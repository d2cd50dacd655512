#pragma once

#include <string>

#include "handset/simulated/environment.h"

namespace handset {

// The folder that the library lies in, with a backslash behind it; empty when the system does not tell.
std::wstring libraryFolder();

// The real surroundings of a simulated handset: the system's clock, and the file handset.txt in the folder
// of the library itself, wherever the program runs from.
class WindowsEnvironment : public Environment {
 public:
  std::optional<std::string> readContent(std::size_t limit) override;
  LocalTime now() override;
  void pause(int milliseconds) override;
  void report(const std::string& line) override;
};

}  // namespace handset
