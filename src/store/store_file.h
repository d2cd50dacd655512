#pragma once

#include <span>
#include <string>
#include <string_view>

#include "store/code_page.h"
#include "store/digest.h"
#include "store/file_system.h"
#include "store/folder_table.h"
#include "store/sms_record.h"
#include "store/store_format.h"
#include "store/store_reader.h"
#include "store/write_result.h"

namespace store {

struct ReadResult {
  FileStatus status;  // ok also for a store that does not exist
  // False when a rewrite from the records would drop or change something that the file holds.
  bool whole = true;

  bool ok() const { return status.ok(); }
};

// The file of one PC folder. Nothing that it holds is lost silently: it is not written before it has been
// read, every change is made whole or not at all, and bytes that the caller's records do not stand for are
// put aside in "<path>.unread-<n>" before they are replaced. Borrows the file system and the code page.
class StoreFile {
 public:
  // section is written and looked for in its header line, without brackets.
  StoreFile(FileSystem& files, const CodePage& codePage, std::string path, std::string_view section);

  const std::string& path() const { return path_; }

  // Fills the table from the file. On failure the table is left alone, and rewrite answers notRead until a
  // read succeeds.
  ReadResult read(FolderTable& table);
  // The caller has given up the records that it had read: no rewrite before the next read.
  void forget() { isRead_ = false; }
  // The file becomes the records in slot order, and behind them the further ones. They are taken for all that
  // the caller knows of the folder.
  WriteResult rewrite(std::span<const SmsRecord> records, std::span<const SmsRecord> further = {});
  // Files one message behind the others, with an empty Index; needs no read before it. Read again before the
  // next rewrite. After an exception it has not been filed.
  WriteResult append(const SmsRecord& message, LineBreaks breaks);

 private:
  // What the file's bytes were after the last success, what they are like, and whether the caller's records
  // hold them all.
  struct Known {
    Digest bytes;
    StoreShape shape;
    bool held = true;
  };

  bool wouldLose(const std::string& bytes) const;
  WriteResult appendTo(File& file, const std::string& bytes, StoreShape shape, const std::string& group);
  WriteResult realign(const std::string& bytes, const std::string& group);
  WriteResult replaceWith(const std::string& bytes, const std::string* lost = nullptr);

  FileSystem& files_;
  const CodePage& codePage_;
  std::string path_;
  std::string section_;
  bool isRead_ = false;
  Known known_;
};

}  // namespace store
