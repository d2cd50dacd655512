#pragma once

#include <string>
#include <string_view>

namespace handset {

// The text of a settings file with "com" in its section "port" set to `port`. Everything else stays as it is,
// byte for byte; what is missing is added, with line ends as in a Windows text file.
std::string withPort(std::string_view settings, int port);

}  // namespace handset
