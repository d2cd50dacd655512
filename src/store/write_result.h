#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "store/file_system.h"

namespace store {

inline constexpr std::uint32_t notEnoughMemory = 8;  // the system's code for it

// How a change of a file, or of a folder with its file, ended. It was made whole or not at all.
struct WriteResult {
  enum class Outcome {
    done,
    notRead,  // the file has not been read yet, and is not written before that
    failed,
    inBoth,  // messages could be put into one folder but not taken out of the other; they are in both
    changed  // somebody else has changed the file meanwhile
  };

  Outcome outcome = Outcome::done;
  std::uint32_t code = 0;  // why it failed, the system's error code
  std::string file;        // the file that it was about; may be empty when memory has run out
  std::string keptCopy;    // where bytes that no record holds were put aside; empty when there was no need
  std::optional<FileStamp> stamp;  // of the file as it is now, where known

  bool ok() const { return outcome == Outcome::done; }
};

inline WriteResult failure(const FileStatus& status, const std::string& file) {
  WriteResult result;
  result.outcome = WriteResult::Outcome::failed;
  result.code = status.code;
  result.file = file;
  return result;
}

}  // namespace store
