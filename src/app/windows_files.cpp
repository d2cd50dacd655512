#include "app/windows_files.h"

#include <algorithm>
#include <memory>

#include "framework/handles.h"
#include "framework/module.h"
#include "framework/text.h"

namespace app {
namespace {

using store::FileOperation;
using store::FileOutcome;
using store::FileStatus;

FileStatus statusOf(FileOperation operation, bool succeeded) {
  if (succeeded) return {FileOutcome::ok, operation, 0};
  const DWORD code = GetLastError();
  const bool missing = code == ERROR_FILE_NOT_FOUND || code == ERROR_PATH_NOT_FOUND;
  return {missing ? FileOutcome::missing : FileOutcome::failed, operation, code};
}

constexpr DWORD blockSize = DWORD{1} << 17;  // what is read at once

// One WriteFile moves at most this much.
constexpr std::size_t largestTransfer = std::size_t{1} << 30;

constexpr int moveAttempts = 5;
constexpr DWORD moveDelay = 20;  // milliseconds

class WindowsFile : public store::File {
 public:
  explicit WindowsFile(HANDLE handle) : handle_(handle) {}

  FileStatus readBlocks(const TakeBlock& take) override {
    LARGE_INTEGER size{};
    if (!GetFileSizeEx(handle_.get(), &size) || !seek(0, FILE_BEGIN))
      return statusOf(FileOperation::read, false);
    const auto block = std::make_unique_for_overwrite<char[]>(blockSize);
    auto behind = static_cast<std::size_t>(size.QuadPart);
    for (;;) {
      DWORD read = 0;
      if (!ReadFile(handle_.get(), block.get(), blockSize, &read, nullptr))
        return statusOf(FileOperation::read, false);
      if (read == 0) return statusOf(FileOperation::read, true);
      behind -= std::min(behind, std::size_t{read});
      take({block.get(), read}, behind);
    }
  }

  FileStatus write(std::string_view bytes) override {
    if (!seek(0, FILE_END)) return statusOf(FileOperation::write, false);
    while (!bytes.empty()) {
      const auto wanted = static_cast<DWORD>(std::min(bytes.size(), largestTransfer));
      DWORD written = 0;
      if (!WriteFile(handle_.get(), bytes.data(), wanted, &written, nullptr))
        return statusOf(FileOperation::write, false);
      if (written < wanted) {
        SetLastError(ERROR_DISK_FULL);
        return statusOf(FileOperation::write, false);
      }
      bytes.remove_prefix(written);
    }
    return statusOf(FileOperation::write, true);
  }

  FileStatus flush() override { return statusOf(FileOperation::flush, FlushFileBuffers(handle_.get()) != 0); }

  FileStatus truncate(std::uint64_t length) override {
    return statusOf(FileOperation::truncate,
                    seek(static_cast<LONGLONG>(length), FILE_BEGIN) && SetEndOfFile(handle_.get()));
  }

  FileStatus close() override { return statusOf(FileOperation::close, CloseHandle(handle_.release()) != 0); }

 private:
  bool seek(LONGLONG distance, DWORD from) {
    LARGE_INTEGER to{};
    to.QuadPart = distance;
    return SetFilePointerEx(handle_.get(), to, nullptr, from) != 0;
  }

  framework::UniqueHandle handle_;
};

store::OpenedFile open(FileOperation operation, const std::string& path, DWORD access, DWORD share,
                       DWORD how) {
  const HANDLE handle = CreateFileW(framework::toWide(path).c_str(), access, share, nullptr, how,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
  store::OpenedFile opened;
  opened.status = statusOf(operation, handle != INVALID_HANDLE_VALUE);
  if (opened.status.ok()) opened.file = std::make_unique<WindowsFile>(handle);
  return opened;
}

}  // namespace

FileStatus WindowsFiles::exists(const std::string& path) {
  const DWORD attributes = GetFileAttributesW(framework::toWide(path).c_str());
  return statusOf(FileOperation::exists, attributes != INVALID_FILE_ATTRIBUTES);
}

store::OpenedFile WindowsFiles::openForReading(const std::string& path) {
  // An editor or a backup that has the file open is no reason not to read it.
  return open(FileOperation::open, path, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
              OPEN_EXISTING);
}

store::OpenedFile WindowsFiles::create(const std::string& path) {
  return open(FileOperation::create, path, GENERIC_READ | GENERIC_WRITE, 0, CREATE_ALWAYS);
}

store::OpenedFile WindowsFiles::openForAppending(const std::string& path) {
  return open(FileOperation::open, path, GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ, OPEN_EXISTING);
}

FileStatus WindowsFiles::replace(const std::string& from, const std::string& to) {
  const auto move = [from = framework::toWide(from), to = framework::toWide(to)] {
    return MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0;
  };
  bool moved = move();
  // A scanner looks into a file that has just been written, for a moment.
  for (int attempt = 1; attempt < moveAttempts && !moved; ++attempt) {
    const DWORD code = GetLastError();
    if (code != ERROR_SHARING_VIOLATION && code != ERROR_ACCESS_DENIED) break;
    Sleep(moveDelay);
    moved = move();
  }
  return statusOf(FileOperation::replace, moved);
}

FileStatus WindowsFiles::remove(const std::string& path) {
  return statusOf(FileOperation::remove, DeleteFileW(framework::toWide(path).c_str()) != 0);
}

std::string WindowsFiles::describe(std::uint32_t code) const {
  return framework::systemErrorText(code);
}

}  // namespace app
