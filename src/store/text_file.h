#pragma once

#include <span>
#include <string>

#include "store/file_system.h"
#include "store/sms_record.h"
#include "store/write_result.h"
#include "text/code_page.h"

namespace store {

// Adds messages to the end of a text file, creating it when it is missing: four lines each as in a store,
// Index as a number, no header. All of them or none. A file whose code page cannot hold them becomes UTF-8
// with a byte-order mark; bytes that this would change are put aside first, as for a store.
WriteResult appendText(FileSystem& files, const text::CodePage& codePage, const std::string& path,
                       std::span<const SmsRecord* const> records);

}  // namespace store
