#include "store/whole_file.h"

#include <utility>

namespace store {

namespace {

FileStatus fillFlushClose(File& file, const Fill& fill) {
  FileStatus status = fill(file);
  if (status.ok()) status = file.flush();
  const FileStatus closed = file.close();
  return status.ok() ? closed : status;
}

Fill filledWith(std::string_view bytes) {
  return [bytes](File& file) { return file.write(bytes); };
}

// Finds the copy that holds these bytes already, left by a program that ended before it had replaced the
// file; else, with a status that says missing, the first free name.
FileStatus findCopy(FileSystem& files, const std::string& path, std::string_view lost, std::string& copy) {
  for (unsigned number = 1;; ++number) {
    copy = path + ".unread-" + std::to_string(number);
    const FileStatus found = files.exists(copy);
    if (!found.ok()) return found;
    std::string bytes;
    if (readFile(files, copy, bytes).ok() && bytes == lost) return found;
  }
}

FileStatus writeAtomically(FileSystem& files, const std::string& path, const Fill& fill) {
  const std::string beside = path + ".new";
  const OpenedFile opened = files.create(beside);
  if (!opened.status.ok()) return opened.status;
  FileStatus status = fillFlushClose(*opened.file, fill);
  if (status.ok()) status = files.replace(beside, path);
  // What a failed removal or an exception leaves behind is emptied by the next write.
  if (!status.ok()) files.remove(beside);
  return status;
}

}  // namespace

FileStatus readBlocks(FileSystem& files, const std::string& path, const File::TakeBlock& take) {
  const OpenedFile opened = files.openForReading(path);
  if (!opened.status.ok()) return opened.status;
  FileStatus status = opened.file->readBlocks(take);
  // Whatever the system calls it: a file that could be opened is not missing.
  if (status.missing()) status.outcome = FileOutcome::failed;
  return status;
}

FileStatus readFile(FileSystem& files, const std::string& path, std::string& bytes) {
  bytes.clear();
  return readBlocks(files, path, File::into(bytes));
}

FileStatus digestFile(FileSystem& files, const std::string& path, Digest& digest) {
  Digester digester;
  const FileStatus status =
      readBlocks(files, path, [&digester](std::string_view block, std::size_t) { digester.take(block); });
  digest = digester.digest();
  return status;
}

WriteResult replaceFile(FileSystem& files, const std::string& path, const Fill& fill,
                        const std::string* lost) {
  std::string copy;
  bool copied = false;
  if (lost != nullptr) {
    FileStatus status = findCopy(files, path, *lost, copy);
    copied = status.missing();
    if (copied) status = writeAtomically(files, copy, filledWith(*lost));
    if (!status.ok()) return failure(status, copy);
  }
  const FileStatus status = writeAtomically(files, path, fill);
  if (status.ok()) {
    WriteResult done;
    done.keptCopy = std::move(copy);
    return done;
  }
  if (copied) files.remove(copy);
  return failure(status, path);
}

WriteResult replaceFile(FileSystem& files, const std::string& path, std::string_view bytes,
                        const std::string* lost) {
  return replaceFile(files, path, filledWith(bytes), lost);
}

WriteResult appendAtomically(File& file, const std::string& path, std::string_view bytes,
                             std::string_view former) {
  FileStatus status = file.write(bytes);
  if (status.ok()) status = file.flush();
  if (!status.ok() && file.truncate(former.size()).ok()) file.flush();
  // Flushed bytes are on the disk whatever closing says; calling them lost would have them filed twice.
  file.close();
  return status.ok() ? WriteResult{} : failure(status, path);
}

}  // namespace store
