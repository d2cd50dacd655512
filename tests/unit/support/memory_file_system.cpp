#include "support/memory_file_system.h"

#include <array>
#include <memory>
#include <utility>

namespace support {

using store::FileOperation;
using store::FileOutcome;
using store::FileStatus;
using store::OpenedFile;

namespace {

constexpr std::array<std::string_view, 10> operationNames{
    "exists", "open", "create", "read", "write", "flush", "truncate", "close", "replace", "remove"};

}  // namespace

class MemoryFile : public store::File {
 public:
  MemoryFile(MemoryFileSystem& files, std::string path) : files_(files), path_(std::move(path)) {}

  // In two blocks, so that whoever reads meets a cut.
  FileStatus readBlocks(const TakeBlock& take) override {
    return files_.step(FileOperation::read, path_, [&] {
      const std::string_view bytes = content().bytes;
      take(bytes.substr(0, bytes.size() / 2), bytes.size() - bytes.size() / 2);
      take(bytes.substr(bytes.size() / 2), 0);
    });
  }
  FileStatus write(std::string_view bytes) override {
    return files_.step(
        FileOperation::write, path_, [&] { content().bytes += bytes; },
        [&] { content().bytes += bytes.substr(0, bytes.size() / 2); });
  }
  FileStatus flush() override {
    return files_.step(FileOperation::flush, path_, [&] { content().flushed = content().bytes; });
  }
  FileStatus truncate(std::uint64_t length) override {
    return files_.step(FileOperation::truncate, path_, [&] { content().bytes.resize(length); });
  }
  FileStatus close() override {
    return files_.step(FileOperation::close, path_, [] {});
  }

 private:
  MemoryFileSystem::Content& content() { return files_.files_[path_]; }

  MemoryFileSystem& files_;
  std::string path_;
};

FileStatus MemoryFileSystem::step(FileOperation operation, const std::string& path,
                                  const std::function<void()>& effect, const std::function<void()>& partly) {
  const FileStatus failed{FileOutcome::failed, operation, faultCode};
  if (!alive_) return failed;
  const auto fault = faults_.find(steps_.size());
  steps_.push_back(std::string(operationNames[static_cast<std::size_t>(operation)]) + " " + path);
  if (fault == faults_.end()) {
    effect();
    return {FileOutcome::ok, operation, 0};
  }
  if (fault->second == Fault::fail && partly) partly();
  if (fault->second == Fault::killAfter) effect();
  alive_ = fault->second == Fault::fail;
  return failed;
}

void MemoryFileSystem::restart() {
  for (auto& [path, content] : files_) content.bytes = content.flushed;
  faults_.clear();
  alive_ = true;
}

std::optional<std::string> MemoryFileSystem::bytes(const std::string& path) const {
  const auto found = files_.find(path);
  return found == files_.end() ? std::nullopt : std::optional(found->second.bytes);
}

std::vector<std::string> MemoryFileSystem::paths() const {
  std::vector<std::string> paths;
  for (const auto& [path, content] : files_) paths.push_back(path);
  return paths;
}

FileStatus MemoryFileSystem::exists(const std::string& path) {
  FileStatus status = step(FileOperation::exists, path, [] {});
  if (status.ok() && !files_.contains(path)) status.outcome = FileOutcome::missing;
  return status;
}

OpenedFile MemoryFileSystem::open(const std::string& path) {
  FileStatus status = step(FileOperation::open, path, [] {});
  if (!status.ok()) return {status, nullptr};
  if (locked_.contains(path)) return {{FileOutcome::failed, FileOperation::open, lockedCode}, nullptr};
  if (!files_.contains(path)) return {{FileOutcome::missing, FileOperation::open, 2}, nullptr};
  return {status, std::make_unique<MemoryFile>(*this, path)};
}

OpenedFile MemoryFileSystem::openForReading(const std::string& path) {
  return open(path);
}
OpenedFile MemoryFileSystem::openForAppending(const std::string& path) {
  return open(path);
}

OpenedFile MemoryFileSystem::create(const std::string& path) {
  const FileStatus status = step(FileOperation::create, path, [&] { files_[path] = {}; });
  return {status, status.ok() ? std::make_unique<MemoryFile>(*this, path) : nullptr};
}

FileStatus MemoryFileSystem::replace(const std::string& from, const std::string& to) {
  return step(FileOperation::replace, to, [&] {
    files_[to] = files_[from];
    files_.erase(from);
  });
}

FileStatus MemoryFileSystem::remove(const std::string& path) {
  return step(FileOperation::remove, path, [&] { files_.erase(path); });
}

}  // namespace support
