#pragma once

#include <cstddef>
#include <memory>
#include <string_view>

#include "store/code_page.h"
#include "store/folder_table.h"

namespace store {

// What the bytes of a store are like, beyond the records in them.
struct StoreShape {
  bool blank = true;    // no bytes at all, apart from the mark: not even a header
  bool marked = false;  // UTF-8 behind a mark, else the system code page
  bool whole = true;    // every line is one that the writer makes, so that rewriting loses nothing
  bool aligned = true;  // four lines put behind the last byte are read back as one more message

  bool operator==(const StoreShape&) const = default;
};

// Puts the messages of the section behind those of the table, in UTF-8. Any bytes will do:
// - only the lines between the section's header (in any letter case) and the next line that starts with '['
//   count; lines of blanks and lines that start with ';' are passed over;
// - four lines make a message by their order, their keys are not looked at;
// - a value is what stands to the right of the last '=', or the whole line, less one blank on either side;
// - where the last message lacks lines, each takes the value of the last line there is;
// - an Index is the number that its value starts with, 0 for none, held within 32 bits.
// The bytes come a block at a time; how they are cut makes no difference. Borrows the section, the code page
// and the table.
class StoreReader {
 public:
  StoreReader(std::string_view section, const CodePage& codePage, FolderTable& table);
  ~StoreReader();
  StoreReader(const StoreReader&) = delete;
  StoreReader& operator=(const StoreReader&) = delete;

  // `behind`: about how many bytes are still to come.
  void take(std::string_view block, std::size_t behind);
  // All bytes have been taken; nothing else may be called afterwards.
  StoreShape finish();

 private:
  class Lines;
  std::unique_ptr<Lines> lines_;
};

// The same with all bytes at once.
StoreShape readStore(std::string_view bytes, std::string_view section, const CodePage& codePage,
                     FolderTable& table);

}  // namespace store
