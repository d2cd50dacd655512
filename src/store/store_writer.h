#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "store/code_page.h"
#include "store/digest.h"
#include "store/file_system.h"
#include "store/sms_record.h"

namespace store {

// Fills a new file with messages: in the code page if it can hold all of them, else in UTF-8 behind the mark.
// They are laid out and written a block at a time, which takes little memory however many they are. Borrows
// the code page.
class StoreWriter {
 public:
  StoreWriter(std::string_view section, const CodePage& codePage);

  // The records in slot order, and behind them the further ones. The file is empty; what it holds after a
  // failure is of no use.
  FileStatus write(File& file, std::span<const SmsRecord> records, std::span<const SmsRecord> further);

  // What the last write that succeeded has made of the file.
  Digest digest() const { return digester_.digest(); }
  bool marked() const { return marked_; }

 private:
  // False when a write failed, or with an ok status when the code page does not hold the text.
  bool writeAll(File& file, std::span<const SmsRecord> records, std::span<const SmsRecord> further);
  bool writeGroup(File& file, const SmsRecord& record);
  bool writeText(File& file, std::string_view text);
  bool writeBlock(File& file);
  bool writeOut(File& file, std::string_view text, bool ascii);
  // False when there is no room for the message or it takes more care.
  bool layOut(const SmsRecord& record);

  std::string header_;
  const CodePage& codePage_;
  std::unique_ptr<char[]> block_;  // UTF-8 that has not been written yet
  std::size_t used_ = 0;           // bytes of it
  bool ascii_ = true;              // whether they are ASCII throughout
  std::string group_;              // a message that is not laid out in the block at once
  FileStatus status_;
  Digester digester_;  // of what has been written
  bool marked_ = false;
};

}  // namespace store
