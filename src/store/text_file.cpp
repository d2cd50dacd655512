#include "store/text_file.h"

#include <optional>
#include <string_view>

#include "store/store_format.h"
#include "store/whole_file.h"

namespace store {

WriteResult appendText(FileSystem& files, const CodePage& codePage, const std::string& path,
                       std::span<const SmsRecord> records) {
  std::string text;
  appendGroups(text, records);

  const OpenedFile opened = files.openForAppending(path);
  if (opened.status.missing()) return replaceFile(files, path, fileBytes(text, codePage));
  if (opened.status.failed()) return failure(opened.status, path);
  std::string bytes;
  const FileStatus status = opened.file->readAll(bytes);
  if (!status.ok()) return failure(status, path);

  // A file that somebody else ended without a line end must not swallow the first line.
  if (!bytes.empty() && bytes.back() != '\n') text.insert(0, "\r\n");
  if (const auto tail = bytesToAppend(text, bytes.starts_with(utf8Mark), codePage)) {
    return appendAtomically(*opened.file, path, *tail, bytes);
  }
  opened.file->close();
  const Transcoded former = transcode(bytes, codePage);
  return replaceFile(files, path, std::string(utf8Mark) + former.text + text,
                     former.exact ? nullptr : &bytes);
}

}  // namespace store
