#pragma once

#include <string_view>

#include "store/folder_table.h"
#include "store/store_format.h"
#include "text/code_page.h"

namespace store {

// What the bytes of a store are like, beyond the records in them.
struct StoreShape {
  bool empty = true;     // no bytes at all, apart from a byte-order mark: not even a header
  bool isUtf8 = false;   // behind a byte-order mark, else the system code page
  bool lossless = true;  // the records hold every value, so that a rewrite loses nothing
  bool aligned = true;   // four lines put behind the last byte are read back as one more message
};

// Puts the messages of the section behind those of the table, in UTF-8. Any bytes will do:
// - only the lines between the section's header (in any letter case) and the next line that starts with '['
//   count; empty lines and lines that start with ';' are passed over;
// - four lines make a message by their order, their keys are not looked at;
// - a value is what stands to the right of the last '=', or the whole line, less one space on either side;
// - where the last message lacks lines, each takes the value of the last line there is;
// - an Index is the number that its value starts with, 0 for none, held within 32 bits.
// Spaces, line ends and letter case of keys are no values: a rewrite may change them.
StoreShape readStore(std::string_view bytes, std::string_view section, const text::CodePage& codePage,
                     FolderTable& table);

// The message as a store gives it back.
SmsRecord readBack(const SmsRecord& message, LineBreaks breaks, const text::CodePage& codePage);

}  // namespace store
