#pragma once

#include <span>
#include <string>
#include <vector>

#include "store/folder.h"
#include "store/sms_record.h"

namespace list {

// What the list needs of the owner of the folders. Whatever fails has been told to the person when a call
// answers false, and nothing has changed then, in memory or on disk.
class FolderRecords {
 public:
  virtual ~FolderRecords() = default;

  virtual std::span<const store::SmsRecord> records(store::Folder folder) const = 0;
  // Makes these the records of a PC folder, in its file and in its table, and renews its label.
  virtual bool replaceRecords(store::Folder folder, std::vector<store::SmsRecord> records) = 0;
  // The same, to be rid of messages that could not be taken out of the folder that they came from.
  virtual bool takeBack(store::Folder folder, std::vector<store::SmsRecord> records) = 0;
  // Takes one record out of a PC folder, likewise; its slot must be there.
  virtual bool removeRecord(store::Folder folder, std::size_t slot) = 0;
  // Adds the messages to the end of a text file.
  virtual bool saveText(const std::string& path, std::span<const store::SmsRecord> records) = 0;
  virtual void showStatus(const std::string& text) = 0;
};

}  // namespace list
