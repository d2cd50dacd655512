#pragma once

#include <array>
#include <initializer_list>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "store/file_system.h"
#include "store/folder.h"
#include "store/folder_table.h"
#include "store/sms_record.h"
#include "store/store_file.h"
#include "store/write_result.h"
#include "text/code_page.h"

namespace store {

// The five tables and the files of the PC folders, with every change of them: the file first, which the table
// then follows. When a change fails, for lack of memory too, table and file are as before. Owned by
// CLeftView; borrows the file system and the code page.
class Folders {
 public:
  // moduleDirectory ends in a separator; the file names follow it as they are.
  Folders(FileSystem& files, const text::CodePage& codePage, std::string_view moduleDirectory);

  const FolderTable& operator[](Folder folder) const { return tables_[position(folder)]; }

  // What the handset has answered for one of its folders.
  void fill(Folder folder, FolderTable table) { tables_[position(folder)] = std::move(table); }
  // Empties the table. A PC folder's file is not rewritten before it has been reloaded.
  void clear(Folder folder);

  // All of these are for PC folders only.
  const std::string& path(Folder folder) const { return file(folder).path(); }
  // Reads the file into the table, which is empty when that fails.
  ReadResult reload(Folder folder);
  // Files a message behind the others, in the file only; the table has it after the next reload.
  WriteResult append(Folder folder, const SmsRecord& message);
  WriteResult replace(Folder folder, std::vector<SmsRecord> records);
  // The slot must be there; the records behind it keep their Index.
  WriteResult erase(Folder folder, std::size_t slot);
  // Puts the messages in those slots, in that order, behind those of the target; takes them out of the source
  // if that is a PC folder. At no moment they are in neither. Slots that are not there are passed over.
  WriteResult move(Folder source, Folder target, std::span<const std::size_t> slots);

  // Takes a message out of a PC folder, whichever slot and Index it has and whether or not it has been read
  // back from the file since; one that is not there is no failure, once the file has been read.
  WriteResult erase(Folder folder, const SmsRecord& message);

  // Whether a PC folder holds a copy of the message: the same text, number and time.
  bool isKept(const SmsRecord& message) const;

  // One change back. What is made of these PC folders from here on, until the next call or until something is
  // filed in one of them, is what undo takes back; `source`, where messages are moved from, comes first.
  void remember(std::initializer_list<Folder> folders);
  bool canUndo() const;
  // The folders that undo changes, if there is something to take back.
  std::vector<Folder> undoFolders() const;
  // The folders hold again what they held, file by file; `changed`, and no change, when a file is not as the
  // change left it. inBoth when only the first could be brought back.
  WriteResult undo();

  // Adds messages of any folder to the end of a text file.
  WriteResult saveText(const std::string& path, Folder folder, std::span<const std::size_t> slots);

  // Where bytes that no record holds have been put aside since the last call.
  std::vector<std::string> takeKeptCopies() { return std::exchange(keptCopies_, {}); }

 private:
  FolderTable& table(Folder folder) { return tables_[position(folder)]; }
  StoreFile& file(Folder folder) { return *stores_[position(folder)]; }
  const StoreFile& file(Folder folder) const { return *stores_[position(folder)]; }
  WriteResult rewrite(Folder folder, std::span<const SmsRecord* const> records);
  void forgetUndo(Folder folder);
  // What the change answers; its kept copy is remembered, and lack of memory is a failure like others.
  template <class Change>
  WriteResult attempt(Change change);

  // What a PC folder held before the last change, and its file's stamp since; none when nothing came of it.
  struct Former {
    Folder folder;
    FolderTable table;
    std::optional<FileStamp> stamp = {};
  };

  FileSystem& files_;
  const text::CodePage& codePage_;
  std::array<FolderTable, folderCount> tables_;
  std::array<std::optional<StoreFile>, folderCount> stores_;  // none for a folder of the handset
  std::vector<std::string> keptCopies_;
  std::vector<Former> former_;
};

}  // namespace store
