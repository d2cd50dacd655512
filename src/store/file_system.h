#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

// The seam through which the stores reach files. Paths are UTF-8.
namespace store {

enum class FileOutcome { ok, missing, failed };

// How one operation ended. `missing` is only for a file or folder that is certainly not there; a file that is
// locked or forbidden has failed.
struct FileStatus {
  FileOutcome outcome = FileOutcome::ok;
  std::uint32_t code = 0;  // the system's error code

  bool ok() const { return outcome == FileOutcome::ok; }
  bool missing() const { return outcome == FileOutcome::missing; }
  bool failed() const { return outcome == FileOutcome::failed; }
};

// Tells whether somebody else has changed a file.
struct FileStamp {
  std::uint64_t size = 0;     // bytes
  std::uint64_t changed = 0;  // time of the last change, in the system's own unit

  bool operator==(const FileStamp&) const = default;
};

// An open file, owned by whoever opened it. Destroying it closes it without a report. Only reading takes
// memory: what has been written never ends in an exception.
class File {
 public:
  File() = default;
  File(const File&) = delete;
  File& operator=(const File&) = delete;
  virtual ~File() = default;

  // All bytes from the start to the end, in place of what `bytes` held.
  virtual FileStatus readAll(std::string& bytes) = 0;
  // Always at the file's end, also after truncating it. A write that stores only a part has failed.
  virtual FileStatus write(std::string_view bytes) = 0;
  // Everything written has reached the disk.
  virtual FileStatus flush() = 0;
  virtual FileStatus truncate(std::uint64_t length) = 0;
  // The file is closed whatever the result; nothing else may be called afterwards.
  virtual FileStatus close() = 0;
};

// `file` is set if and only if `status` is ok.
struct OpenedFile {
  FileStatus status;
  std::unique_ptr<File> file;
};

class FileSystem {
 public:
  FileSystem() = default;
  FileSystem(const FileSystem&) = delete;
  FileSystem& operator=(const FileSystem&) = delete;
  virtual ~FileSystem() = default;

  // ok, missing, or failed when it cannot be told; `stamp` is set only when it is ok.
  virtual FileStatus stampOf(const std::string& path, FileStamp& stamp) = 0;
  virtual OpenedFile openForReading(const std::string& path) = 0;
  // For writing; an existing file is emptied.
  virtual OpenedFile create(const std::string& path) = 0;
  // An existing file, for reading and for writing at its end, closed to other writers until it is closed.
  virtual OpenedFile openForAppending(const std::string& path) = 0;
  // `from` takes the place of `to` in one step, whether `to` exists or not. On failure both are as before.
  virtual FileStatus replace(const std::string& from, const std::string& to) = 0;
  virtual FileStatus remove(const std::string& path) = 0;
};

}  // namespace store
