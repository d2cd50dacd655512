#include "store/text_file.h"

#include <optional>
#include <string_view>

#include "store/store_format.h"
#include "store/whole_file.h"
#include "text/unicode.h"

namespace store {

WriteResult appendText(FileSystem& files, const text::CodePage& codePage, const std::string& path,
                       std::span<const SmsRecord* const> records) {
  std::string text;
  for (const SmsRecord* record : records) appendGroup(text, *record, LineBreaks::stored, IndexLine::number);

  const OpenedFile opened = files.openForAppending(path);
  if (opened.status.missing()) return replaceFile(files, path, fileBytes(text, codePage));
  if (opened.status.failed()) return failure(opened.status, path);
  std::string bytes;
  const FileStatus status = opened.file->readAll(bytes);
  if (!status.ok()) return failure(status, path);

  // A file that somebody else ended without a line end must not swallow the first line.
  if (!bytes.empty() && bytes != text::byteOrderMark && bytes.back() != '\n') text.insert(0, "\r\n");
  if (const auto tail = bytesToAppend(text, bytes.starts_with(text::byteOrderMark), codePage))
    return appendAtomically(*opened.file, path, *tail, bytes.size());
  opened.file->close();
  const Transcoded former = transcode(bytes, codePage);
  return replaceFile(files, path, std::string(text::byteOrderMark) + former.text + text,
                     former.exact ? nullptr : &bytes);
}

}  // namespace store
