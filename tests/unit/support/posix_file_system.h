#pragma once

#include "store/file_system.h"

namespace support {

// The files of the machine that the tests run on.
class PosixFileSystem : public store::FileSystem {
 public:
  store::FileStatus exists(const std::string& path) override;
  store::OpenedFile openForReading(const std::string& path) override;
  store::OpenedFile create(const std::string& path) override;
  store::OpenedFile openForAppending(const std::string& path) override;
  store::FileStatus replace(const std::string& from, const std::string& to) override;
  store::FileStatus remove(const std::string& path) override;
  std::string describe(std::uint32_t code) const override;
};

}  // namespace support
