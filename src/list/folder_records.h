#pragma once

#include <functional>
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
  // Takes records out of a PC folder one by one, the highest slot first; each is a change of the file of its
  // own, so that a failure leaves the rest where it is. `next` is told how many are gone before each. Answers
  // how many are gone in the end.
  virtual std::size_t removeRecords(store::Folder folder, std::span<const std::size_t> slots,
                                    const std::function<void(std::size_t gone)>& next) = 0;
  // Adds the messages to the end of a text file.
  virtual bool saveText(const std::string& path, std::span<const store::SmsRecord> records) = 0;
  virtual void showStatus(const std::string& text) = 0;
};

}  // namespace list
