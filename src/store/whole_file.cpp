#include "store/whole_file.h"

#include <utility>

namespace store {
namespace {

FileStatus writeFlushClose(File& file, std::string_view bytes) {
  FileStatus status = file.write(bytes);
  if (status.ok()) status = file.flush();
  const FileStatus closed = file.close();
  return status.ok() ? closed : status;
}

// Finds the copy that holds these bytes already, left by a program that ended before it had replaced the
// file; else, with a status that says missing, the first free name.
FileStatus findCopy(FileSystem& files, const std::string& path, std::string_view lost, std::string& copy) {
  for (unsigned number = 1;; ++number) {
    copy = path + ".unread-" + std::to_string(number);
    FileStamp stamp;
    const FileStatus found = files.stampOf(copy, stamp);
    if (!found.ok()) return found;
    std::string bytes;
    if (stamp.size == lost.size() && readFile(files, copy, bytes).ok() && bytes == lost) return found;
  }
}

FileStatus writeAtomically(FileSystem& files, const std::string& path, std::string_view bytes,
                           std::optional<FileStamp>& stamp) {
  const std::string beside = path + ".new";
  const OpenedFile opened = files.create(beside);
  if (!opened.status.ok()) return opened.status;
  FileStatus status = writeFlushClose(*opened.file, bytes);
  // Before it bears a name under which somebody else could change it.
  if (status.ok()) stamp = stampOf(files, beside);
  if (status.ok()) status = files.replace(beside, path);
  // What a failed removal or an exception leaves behind is emptied by the next write.
  if (!status.ok()) files.remove(beside);
  return status;
}

}  // namespace

FileStatus readFile(FileSystem& files, const std::string& path, std::string& bytes) {
  bytes.clear();
  const OpenedFile opened = files.openForReading(path);
  if (!opened.status.ok()) return opened.status;
  FileStatus status = opened.file->readAll(bytes);
  // Whatever the system calls it: a file that could be opened is not missing.
  if (status.missing()) status.outcome = FileOutcome::failed;
  return status;
}

std::optional<FileStamp> stampOf(FileSystem& files, const std::string& path) {
  FileStamp stamp;
  return files.stampOf(path, stamp).ok() ? std::optional(stamp) : std::nullopt;
}

WriteResult replaceFile(FileSystem& files, const std::string& path, std::string_view bytes,
                        const std::string* lost) {
  WriteResult result;
  bool copied = false;
  if (lost != nullptr) {
    FileStatus status = findCopy(files, path, *lost, result.keptCopy);
    copied = status.missing();
    if (copied) status = writeAtomically(files, result.keptCopy, *lost, result.stamp);
    if (!status.ok()) return failure(status, result.keptCopy);
  }
  const FileStatus status = writeAtomically(files, path, bytes, result.stamp);
  if (status.ok()) return result;
  if (copied) files.remove(result.keptCopy);
  return failure(status, path);
}

WriteResult appendAtomically(File& file, const std::string& path, std::string_view bytes,
                             std::uint64_t formerSize) {
  FileStatus status = file.write(bytes);
  if (status.ok()) status = file.flush();
  if (!status.ok() && file.truncate(formerSize).ok()) file.flush();
  // Flushed bytes are on the disk whatever closing says; calling them lost would have them filed twice.
  file.close();
  return status.ok() ? WriteResult{} : failure(status, path);
}

}  // namespace store
