#pragma once

#include <string>

namespace framework {

// The whole of a file (path in UTF-8); false when it cannot be read or is larger than a settings or image
// file has any business to be (64 MB).
bool readFile(const std::string& path, std::string& bytes);

}  // namespace framework
