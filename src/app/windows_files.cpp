#include "app/windows_files.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "framework/handles.h"
#include "framework/text.h"

namespace app {
namespace {

using store::FileOutcome;
using store::FileStatus;

FileStatus statusOf(bool succeeded) {
  if (succeeded) return {};
  const DWORD code = GetLastError();
  const bool missing = code == ERROR_FILE_NOT_FOUND || code == ERROR_PATH_NOT_FOUND;
  return {missing ? FileOutcome::missing : FileOutcome::failed, code};
}

// One ReadFile or WriteFile moves at most this much.
constexpr std::size_t largestTransfer = std::size_t{1} << 30;

constexpr int moveAttempts = 5;
constexpr DWORD moveDelay = 20;  // milliseconds

class WindowsFile : public store::File {
 public:
  explicit WindowsFile(framework::UniqueHandle handle) : handle_(std::move(handle)) {}

  FileStatus readAll(std::string& bytes) override {
    LARGE_INTEGER size{};
    if (!GetFileSizeEx(handle_.get(), &size) || !seek(0, FILE_BEGIN)) return statusOf(false);
    // A program of 32 bits must not take the first part of a file for the whole.
    if (std::cmp_greater(size.QuadPart, bytes.max_size())) {
      SetLastError(ERROR_FILE_TOO_LARGE);
      return statusOf(false);
    }
    bytes.resize(static_cast<std::size_t>(size.QuadPart));
    std::size_t used = 0;
    while (used < bytes.size()) {
      const auto wanted = static_cast<DWORD>(std::min(bytes.size() - used, largestTransfer));
      DWORD read = 0;
      if (!ReadFile(handle_.get(), bytes.data() + used, wanted, &read, nullptr)) return statusOf(false);
      if (read == 0) break;  // it has become shorter meanwhile
      used += read;
    }
    bytes.resize(used);
    return {};
  }

  FileStatus write(std::string_view bytes) override {
    if (!seek(0, FILE_END)) return statusOf(false);
    while (!bytes.empty()) {
      const auto wanted = static_cast<DWORD>(std::min(bytes.size(), largestTransfer));
      DWORD written = 0;
      if (!WriteFile(handle_.get(), bytes.data(), wanted, &written, nullptr)) return statusOf(false);
      if (written < wanted) {
        SetLastError(ERROR_DISK_FULL);
        return statusOf(false);
      }
      bytes.remove_prefix(written);
    }
    return statusOf(true);
  }

  FileStatus flush() override { return statusOf(FlushFileBuffers(handle_.get()) != 0); }

  FileStatus truncate(std::uint64_t length) override {
    return statusOf(seek(static_cast<LONGLONG>(length), FILE_BEGIN) && SetEndOfFile(handle_.get()));
  }

  FileStatus close() override { return statusOf(CloseHandle(handle_.release()) != 0); }

 private:
  bool seek(LONGLONG distance, DWORD from) {
    LARGE_INTEGER to{};
    to.QuadPart = distance;
    return SetFilePointerEx(handle_.get(), to, nullptr, from) != 0;
  }

  framework::UniqueHandle handle_;
};

store::OpenedFile open(const std::string& path, DWORD access, DWORD share, DWORD how) {
  store::OpenedFile opened;
  const HANDLE handle = CreateFileW(framework::toWide(path).c_str(), access, share, nullptr, how,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
  opened.status = statusOf(handle != INVALID_HANDLE_VALUE);
  if (!opened.status.ok()) return opened;
  // In its guard before anything takes memory: left open, the file would be refused from then on.
  framework::UniqueHandle guarded(handle);
  opened.file = std::make_unique<WindowsFile>(std::move(guarded));
  return opened;
}

}  // namespace

FileStatus WindowsFiles::stampOf(const std::string& path, store::FileStamp& stamp) {
  WIN32_FILE_ATTRIBUTE_DATA found{};
  if (!GetFileAttributesExW(framework::toWide(path).c_str(), GetFileExInfoStandard, &found))
    return statusOf(false);
  const auto joined = [](DWORD high, DWORD low) { return std::uint64_t{high} << 32 | low; };
  stamp = {joined(found.nFileSizeHigh, found.nFileSizeLow),
           joined(found.ftLastWriteTime.dwHighDateTime, found.ftLastWriteTime.dwLowDateTime)};
  return {};
}

store::OpenedFile WindowsFiles::openForReading(const std::string& path) {
  // An editor or a backup that has the file open is no reason not to read it.
  return open(path, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, OPEN_EXISTING);
}

store::OpenedFile WindowsFiles::create(const std::string& path) {
  return open(path, GENERIC_READ | GENERIC_WRITE, 0, CREATE_ALWAYS);
}

store::OpenedFile WindowsFiles::openForAppending(const std::string& path) {
  return open(path, GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ, OPEN_EXISTING);
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
  return statusOf(moved);
}

FileStatus WindowsFiles::remove(const std::string& path) {
  return statusOf(DeleteFileW(framework::toWide(path).c_str()) != 0);
}

}  // namespace app
