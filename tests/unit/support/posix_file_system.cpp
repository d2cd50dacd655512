#include "support/posix_file_system.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>

namespace support {

using store::FileOperation;
using store::FileOutcome;
using store::FileStatus;
using store::OpenedFile;

namespace {

FileStatus statusOf(bool succeeded, FileOperation operation) {
  if (succeeded) return {FileOutcome::ok, operation, 0};
  const bool missing =
      errno == ENOENT && (operation == FileOperation::open || operation == FileOperation::exists);
  return {missing ? FileOutcome::missing : FileOutcome::failed, operation, static_cast<std::uint32_t>(errno)};
}

constexpr std::size_t blockSize = std::size_t{1} << 17;

class PosixFile : public store::File {
 public:
  explicit PosixFile(int descriptor) : descriptor_(descriptor) {}
  ~PosixFile() override { close(); }

  FileStatus readBlocks(const TakeBlock& take) override {
    struct stat info {};
    if (::fstat(descriptor_, &info) != 0) return statusOf(false, FileOperation::read);
    const auto block = std::make_unique_for_overwrite<char[]>(blockSize);
    for (off_t at = 0;;) {
      const ssize_t count = ::pread(descriptor_, block.get(), blockSize, at);
      if (count <= 0) return statusOf(count == 0, FileOperation::read);
      at += count;
      take({block.get(), static_cast<std::size_t>(count)},
           at < info.st_size ? static_cast<std::size_t>(info.st_size - at) : 0);
    }
  }
  FileStatus write(std::string_view bytes) override {
    const ssize_t count = ::write(descriptor_, bytes.data(), bytes.size());
    return statusOf(count == static_cast<ssize_t>(bytes.size()), FileOperation::write);
  }
  FileStatus flush() override { return statusOf(::fsync(descriptor_) == 0, FileOperation::flush); }
  FileStatus truncate(std::uint64_t length) override {
    return statusOf(::ftruncate(descriptor_, static_cast<off_t>(length)) == 0, FileOperation::truncate);
  }
  FileStatus close() override {
    const bool closed = descriptor_ < 0 || ::close(descriptor_) == 0;
    descriptor_ = -1;
    return statusOf(closed, FileOperation::close);
  }

 private:
  int descriptor_;
};

OpenedFile opened(const std::string& path, int flags, FileOperation operation) {
  const int descriptor = ::open(path.c_str(), flags | O_CLOEXEC, 0600);
  const FileStatus status = statusOf(descriptor >= 0, operation);
  return {status, descriptor < 0 ? nullptr : std::make_unique<PosixFile>(descriptor)};
}

}  // namespace

FileStatus PosixFileSystem::exists(const std::string& path) {
  return statusOf(::access(path.c_str(), F_OK) == 0, FileOperation::exists);
}
OpenedFile PosixFileSystem::openForReading(const std::string& path) {
  return opened(path, O_RDONLY, FileOperation::open);
}
OpenedFile PosixFileSystem::create(const std::string& path) {
  return opened(path, O_WRONLY | O_CREAT | O_TRUNC | O_APPEND, FileOperation::create);
}
OpenedFile PosixFileSystem::openForAppending(const std::string& path) {
  return opened(path, O_RDWR | O_APPEND, FileOperation::open);
}
FileStatus PosixFileSystem::replace(const std::string& from, const std::string& to) {
  return statusOf(std::rename(from.c_str(), to.c_str()) == 0, FileOperation::replace);
}
FileStatus PosixFileSystem::remove(const std::string& path) {
  return statusOf(::unlink(path.c_str()) == 0, FileOperation::remove);
}
std::string PosixFileSystem::describe(std::uint32_t code) const {
  return std::strerror(static_cast<int>(code));
}

}  // namespace support
