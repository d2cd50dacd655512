#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "store/file_system.h"
#include "store/folder_table.h"
#include "store/sms_record.h"
#include "store/store_format.h"
#include "store/store_reader.h"
#include "store/write_result.h"
#include "text/code_page.h"

namespace store {

struct ReadResult {
  FileStatus status;     // ok also for a store that does not exist
  bool lossless = true;  // false when the file holds values that the records do not

  bool ok() const { return status.ok(); }
};

// The file of one PC folder. No value that it holds is lost silently: it is not written before it has been
// read, every change is made whole or not at all, and what the caller's records do not hold is put aside in
// "<path>.unread-<n>" before it is replaced. Borrows the file system and the code page.
class StoreFile {
 public:
  // section is written and looked for in its header line, without brackets.
  StoreFile(FileSystem& files, const text::CodePage& codePage, std::string path, std::string_view section);

  const std::string& path() const { return path_; }

  // Fills the table from the file. On failure the table is left alone, and rewrite answers notRead until a
  // read succeeds.
  ReadResult read(FolderTable& table);
  // The caller has given up the records that it had read: no rewrite before the next read.
  void forget() { isRead_ = false; }
  bool isRead() const { return isRead_; }
  // The file becomes these records. `known` are all that the caller knew of it until now.
  WriteResult rewrite(std::span<const SmsRecord* const> records, std::span<const SmsRecord> known);
  // Files one message behind the others, with an empty Index; needs no read before it. Read again before the
  // next rewrite. After an exception it has not been filed.
  WriteResult append(const SmsRecord& message, LineBreaks breaks);

 private:
  // The file after the last success: its stamp, what its bytes are like, and whether the caller's records
  // hold them all. Without a stamp it has to be looked at again.
  struct State {
    std::optional<FileStamp> stamp;
    StoreShape shape;
    bool held = true;
  };

  bool wouldLose(std::string_view bytes, std::span<const SmsRecord> known) const;
  WriteResult replaceWith(const std::string& bytes, const std::string* lost = nullptr);

  FileSystem& files_;
  const text::CodePage& codePage_;
  std::string path_;
  std::string section_;
  bool isRead_ = false;
  State state_;
};

}  // namespace store
