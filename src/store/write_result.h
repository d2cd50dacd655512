#pragma once

#include <string>

#include "store/file_system.h"

namespace store {

// How a change of a file ended. It was made whole or not at all.
struct WriteResult {
  enum class Outcome { done, notRead, failed };

  Outcome outcome = Outcome::done;
  FileStatus status;     // the step that failed
  std::string file;      // the file that it was about
  std::string keptCopy;  // where bytes that no record holds were put aside; empty when there was no need

  bool ok() const { return outcome == Outcome::done; }
};

inline WriteResult failure(const FileStatus& status, const std::string& file) {
  return {.outcome = WriteResult::Outcome::failed, .status = status, .file = file, .keptCopy = {}};
}

}  // namespace store
