#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "store/digest.h"
#include "store/file_system.h"
#include "store/write_result.h"

// Files are read whole, and changed whole or not at all.
namespace store {

// All bytes of the file, see File::readBlocks; none when it is missing.
FileStatus readBlocks(FileSystem& files, const std::string& path, const File::TakeBlock& take);
// The same in one piece.
FileStatus readFile(FileSystem& files, const std::string& path, std::string& bytes);
// Their digest, which takes no memory.
FileStatus digestFile(FileSystem& files, const std::string& path, Digest& digest);

// Writes what a new file is to hold.
using Fill = std::function<FileStatus(File& file)>;

// Creates or replaces the file in one step: a new one is filled beside it as "<path>.new", reaches the disk,
// and takes its place. Before that, `lost` (bytes of the file that the new ones do not stand for; null for
// none) is put aside in "<path>.unread-<n>" under the first free number, unless such a copy holds the same
// bytes already. On failure the file is as before, the one beside it is gone, and so is a copy made here; an
// exception may leave both, and the next attempt uses them.
WriteResult replaceFile(FileSystem& files, const std::string& path, const Fill& fill,
                        const std::string* lost = nullptr);
WriteResult replaceFile(FileSystem& files, const std::string& path, std::string_view bytes,
                        const std::string* lost = nullptr);

// One write at the end of `path`, which is open for appending and holds `former`. The bytes are on the disk
// when this returns ok; on failure the file is cut back to its former length. Closes the file.
WriteResult appendAtomically(File& file, const std::string& path, std::string_view bytes,
                             std::string_view former);

}  // namespace store
