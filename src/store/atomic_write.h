#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "store/file_system.h"

namespace store {

// Creates or replaces the file in one step: the bytes go to "<path>.new", reach the disk, and take its place.
// On failure the file is as before and the one beside it is gone.
FileStatus writeAtomically(FileSystem& files, const std::string& path, std::string_view bytes);

// One write at the end of a file opened for appending, on the disk when this returns ok, and closed. On
// failure the file is cut back to its former length, in bytes.
FileStatus appendAtomically(File& file, std::string_view bytes, std::uint64_t formerLength);

// Puts bytes aside in "<path>.unread-<n>" under the first free number and gives that path in `copy`.
FileStatus keepCopy(FileSystem& files, const std::string& path, std::string_view bytes, std::string& copy);

}  // namespace store
