#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "store/file_system.h"
#include "store/write_result.h"

// Files are read whole, and changed whole or not at all.
namespace store {

// All bytes of the file; none when it is missing.
FileStatus readFile(FileSystem& files, const std::string& path, std::string& bytes);

// The stamp of a file; nothing when it is missing or cannot be looked at.
std::optional<FileStamp> stampOf(FileSystem& files, const std::string& path);

// Creates or replaces the file in one step: a new one is written beside it as "<path>.new", reaches the disk,
// and takes its place. Before that, `lost` (bytes of the file that the new ones do not stand for; null for
// none) is put aside in "<path>.unread-<n>" under the first free number, unless such a copy holds the same
// bytes already. On failure the file is as before, the one beside it is gone, and so is a copy made here; an
// exception may leave both, and the next attempt uses them.
WriteResult replaceFile(FileSystem& files, const std::string& path, std::string_view bytes,
                        const std::string* lost = nullptr);

// One write at the end of `path`, which is open for appending and `formerSize` bytes long. The bytes are on
// the disk when this returns ok; on failure the file is cut back to its former size. Closes the file.
WriteResult appendAtomically(File& file, const std::string& path, std::string_view bytes,
                             std::uint64_t formerSize);

}  // namespace store
