#pragma once

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>

#include "fuzz/input.h"
#include "store/store_file.h"
#include "store/store_format.h"
#include "store/store_reader.h"
#include "store/utf8.h"
#include "support/fake_code_pages.h"
#include "support/memory_file_system.h"

// What must hold for a store file of any bytes: no message is lost, whatever is done with it.
namespace fuzz {

inline constexpr const char* storePath = "pcInbox.dat";
inline constexpr std::string_view storeSection = "PCINBOX";

// A value as it is read back once it has been written.
inline std::string readBack(std::string value, store::LineBreaks breaks = store::LineBreaks::stored) {
  if (breaks == store::LineBreaks::sent) std::erase(value, '\r');
  for (const char c : {'\r', '\n', '\0'}) std::ranges::replace(value, c, ' ');
  const std::size_t equals = value.rfind('=');
  if (equals == value.npos) return value;
  // What is left of the '=' is lost, and with it the blank that the writer put there: that of the text goes.
  value.erase(0, equals + 1);
  if (value.starts_with(' ')) value.erase(0, 1);
  return value;
}

inline store::FolderTable writtenBack(const store::FolderTable& table) {
  store::FolderTable written;
  for (const store::SmsRecord& record : table.records()) {
    written.append({readBack(record.Content), readBack(record.Time), readBack(record.Phone), record.Index});
  }
  return written;
}

inline void requireEqual(const store::FolderTable& left, const store::FolderTable& right) {
  require(std::ranges::equal(left.records(), right.records()));
}

inline store::FolderTable tableIn(const support::MemoryFileSystem& files, const text::CodePage& page) {
  store::FolderTable table;
  store::readStore(files.bytes(storePath).value_or(""), storeSection, page, table);
  return table;
}

// The former bytes are in the file still, in the same or in another encoding, or in a copy beside it.
inline void requireKept(const support::MemoryFileSystem& files, const store::WriteResult& result,
                        const std::string& former, const text::CodePage& page) {
  const std::string now = files.bytes(storePath).value_or("");
  if (now.starts_with(former)) return;
  if (!result.keptCopy.empty()) return require(files.bytes(result.keptCopy) == former);
  const store::Transcoded transcoded = store::transcode(former, page);
  require(transcoded.exact && now.starts_with(std::string{store::utf8Mark} + transcoded.text));
}

// `expected` is what the bytes hold.
inline void appendTo(const std::string& bytes, store::FolderTable expected, const text::CodePage& page,
                     const store::SmsRecord& message, store::LineBreaks breaks) {
  support::MemoryFileSystem files;
  files.put(storePath, bytes);
  expected.append({readBack(message.Content, breaks), readBack(message.Time), readBack(message.Phone), 0});

  store::StoreFile file{files, page, storePath, storeSection};
  const store::WriteResult result = file.append(message, breaks);
  require(result.ok());
  requireEqual(writtenBack(tableIn(files, page)), writtenBack(expected));
  requireKept(files, result, bytes, page);
}

// `expected` is what the bytes hold; the file hands them on in pieces.
inline void rewrite(const std::string& bytes, const store::FolderTable& expected,
                    const text::CodePage& page) {
  support::MemoryFileSystem files;
  files.put(storePath, bytes);
  store::StoreFile file{files, page, storePath, storeSection};
  store::FolderTable table;
  const store::ReadResult read = file.read(table);
  require(read.ok());
  requireEqual(table, expected);
  const store::WriteResult result = file.rewrite(table.records());
  require(result.ok());
  require(read.whole == result.keptCopy.empty());
  if (!read.whole) require(files.bytes(result.keptCopy) == bytes);
  const store::FolderTable again = tableIn(files, page);
  requireEqual(again, read.whole ? table : writtenBack(table));

  // What the program has written itself is known to the byte.
  store::FolderTable unused;
  const store::StoreShape shape = store::readStore(*files.bytes(storePath), storeSection, page, unused);
  require(shape.whole && shape.aligned && !shape.blank);
}

// The input as what to do, a message to file, a NUL behind each of its texts, and the bytes of a store.
inline void stores(std::string_view input) {
  Source source{input};
  const unsigned ways = source.byte();
  const store::LineBreaks breaks = (ways & 2U) != 0 ? store::LineBreaks::sent : store::LineBreaks::stored;
  store::SmsRecord message;
  for (std::string* text : {&message.Content, &message.Phone, &message.Time})
    *text = store::repairedUtf8(source.textUpTo('\0'));
  const std::string bytes{source.rest()};

  static const support::Latin1Page latin1;
  static const support::DoubleBytePage doubleByte;
  const text::CodePage& page = (ways & 1U) != 0 ? static_cast<const text::CodePage&>(doubleByte) : latin1;

  store::FolderTable table;
  store::readStore(bytes, storeSection, page, table);
  for (const store::SmsRecord& record : table.records()) {
    for (const std::string* text : {&record.Content, &record.Phone, &record.Time})
      require(store::isValidUtf8(*text) && text->find_first_of("\n=") == text->npos);
  }
  if ((ways & 4U) != 0) {
    rewrite(bytes, table, page);
  } else {
    appendTo(bytes, std::move(table), page, message, breaks);
  }
}

}  // namespace fuzz
