#pragma once

#include <string>
#include <vector>

#include "store/folder_table.h"
#include "store/sms_record.h"

// Messages and the bytes of stores, as the tests write them down.
namespace support {

inline const std::string byteOrderMark = "\xEF\xBB\xBF";

inline store::SmsRecord message(const std::string& content, std::int32_t index = 0) {
  return {.Content = content, .Time = "2005/01/02  09:05:07", .Phone = "12", .Index = index};
}

// The lines of such a message; an empty index is that of one filed since the last rewrite.
inline std::string lines(const std::string& content, const std::string& index = "0") {
  return "Content = " + content + " \r\nPhone = 12 \r\nTime = 2005/01/02  09:05:07 \r\nIndex = " + index +
         " \r\n";
}

inline std::vector<std::string> contents(const store::FolderTable& table) {
  std::vector<std::string> texts;
  for (const store::SmsRecord& record : table.records()) texts.push_back(record.Content);
  return texts;
}

}  // namespace support
