#pragma once

#include "store/file_system.h"

namespace app {

// Files as Windows keeps them. Error codes are those of GetLastError.
class WindowsFiles : public store::FileSystem {
 public:
  store::FileStatus stampOf(const std::string& path, store::FileStamp& stamp) override;
  store::OpenedFile openForReading(const std::string& path) override;
  store::OpenedFile create(const std::string& path) override;
  store::OpenedFile openForAppending(const std::string& path) override;
  store::FileStatus replace(const std::string& from, const std::string& to) override;
  store::FileStatus remove(const std::string& path) override;
};

}  // namespace app
