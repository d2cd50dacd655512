#pragma once

#include <span>
#include <string>
#include <string_view>

#include "store/code_page.h"
#include "store/file_system.h"
#include "store/folder_table.h"
#include "store/sms_record.h"
#include "store/store_format.h"
#include "store/store_reader.h"

namespace store {

struct ReadResult {
  FileStatus status;  // ok also for a store that does not exist
  // False when a rewrite from the records would drop or change something that the file holds.
  bool whole = true;

  bool ok() const { return status.ok(); }
};

struct WriteResult {
  enum class Outcome { done, notRead, failed };

  Outcome outcome = Outcome::done;
  FileStatus status;     // the step that failed
  std::string file;      // the file that it was about
  std::string keptCopy;  // where bytes that no record holds were put aside; empty when there was no need

  bool ok() const { return outcome == Outcome::done; }
};

// The file of one PC folder. Nothing that it holds is lost silently: it is not written before it has been
// read, every change is made whole or not at all, and bytes that the caller's records do not stand for are
// put aside in "<path>.unread-<n>" before they are replaced. Borrows the file system and the code page.
class StoreFile {
 public:
  // section is written and looked for in its header line, without brackets.
  StoreFile(FileSystem& files, const CodePage& codePage, std::string path, std::string_view section);

  const std::string& path() const { return path_; }

  // Fills the table from the file. On failure the table is left alone, and rewrite and append answer notRead
  // until a read succeeds.
  ReadResult read(FolderTable& table);
  // The file becomes the records in slot order. They are taken for all that the caller knows of the folder.
  WriteResult rewrite(std::span<const SmsRecord> records);
  // Files one message behind the others, with an empty Index. Read again before the next rewrite.
  WriteResult append(const SmsRecord& message, LineBreaks breaks);

 private:
  // What is known of the file since the last success: its bytes, and whether rewriting loses any of them.
  struct Known {
    std::string bytes;
    StoreShape shape;
    bool held = true;  // the caller's records hold everything in bytes
  };

  StoreShape shapeOf(std::string_view bytes, FolderTable& records) const;
  bool wouldLose(std::string_view bytes) const;
  WriteResult appendToWhole(File& file, std::string& bytes, const StoreShape& shape, std::string_view group);
  WriteResult replaceWith(std::string bytes, std::string_view lost, bool held);
  WriteResult failure(const FileStatus& status) const;

  FileSystem& files_;
  const CodePage& codePage_;
  std::string path_;
  std::string section_;
  bool isRead_ = false;
  Known known_;
};

}  // namespace store
