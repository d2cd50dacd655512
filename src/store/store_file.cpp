#include "store/store_file.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "store/whole_file.h"
#include "text/unicode.h"

namespace store {

StoreFile::StoreFile(FileSystem& files, const text::CodePage& codePage, std::string path,
                     std::string_view section)
    : files_(files), codePage_(codePage), path_(std::move(path)), section_(section) {}

ReadResult StoreFile::read(FolderTable& table) {
  isRead_ = false;
  // Before the bytes: what is changed meanwhile is then told at the next write.
  const std::optional<FileStamp> stamp = stampOf(files_, path_);
  std::string bytes;
  const FileStatus status = readFile(files_, path_, bytes);
  if (status.failed()) return {status, false};

  FolderTable records;
  const StoreShape shape = readStore(bytes, section_, codePage_, records);
  table = std::move(records);
  state_ = {stamp, shape, shape.lossless};
  isRead_ = true;
  return {{}, shape.lossless};
}

WriteResult StoreFile::rewrite(std::span<const SmsRecord* const> records, std::span<const SmsRecord> known) {
  if (!isRead_) {
    WriteResult notRead;
    notRead.outcome = WriteResult::Outcome::notRead;
    notRead.file = path_;
    return notRead;
  }
  std::string former;
  bool losing = false;
  if (!state_.held || !state_.stamp || state_.stamp != stampOf(files_, path_)) {
    const FileStatus status = readFile(files_, path_, former);
    if (status.failed()) return failure(status, path_);
    losing = !status.missing() && wouldLose(former, known);
  }
  const std::string bytes = fileBytes(layOut(section_, records), codePage_);
  WriteResult result = replaceFile(files_, path_, bytes, losing ? &former : nullptr);
  if (result.ok())
    state_ = {result.stamp, {.empty = false, .isUtf8 = bytes.starts_with(text::byteOrderMark)}, true};
  return result;
}

// Whether the file has come to hold what the caller does not know.
bool StoreFile::wouldLose(std::string_view bytes, std::span<const SmsRecord> known) const {
  FolderTable records;
  if (!readStore(bytes, section_, codePage_, records).lossless) return true;
  auto next = known.begin();
  for (const SmsRecord& record : std::as_const(records).records()) {
    next = std::find(next, known.end(), record);
    if (next == known.end()) return true;
    ++next;
  }
  return false;
}

WriteResult StoreFile::append(const SmsRecord& message, LineBreaks breaks) {
  std::string group;
  appendGroup(group, message, breaks, IndexLine::empty);

  const OpenedFile opened = files_.openForAppending(path_);
  if (opened.status.missing()) return replaceWith(fileBytes(headerLine(section_) + group, codePage_));
  if (opened.status.failed()) return failure(opened.status, path_);
  std::string bytes;
  const FileStatus status = opened.file->readAll(bytes);
  if (!status.ok()) return failure(status, path_);

  FolderTable records;
  StoreShape shape = state_.shape;
  if (!state_.stamp || state_.stamp != stampOf(files_, path_) || !shape.aligned)
    shape = readStore(bytes, section_, codePage_, records);
  if (!shape.aligned) {
    // Lines at the end would not be read back as this message: the file is made anew from what is read of it.
    opened.file->close();
    std::vector<const SmsRecord*> all;
    for (const SmsRecord& record : std::as_const(records).records()) all.push_back(&record);
    return replaceWith(fileBytes(layOut(section_, all) + group, codePage_),
                       shape.lossless ? nullptr : &bytes);
  }
  const std::string text = shape.empty ? headerLine(section_) + group : group;
  const std::optional<std::string> tail = bytesToAppend(text, shape.isUtf8, codePage_);
  if (!tail) {
    opened.file->close();
    const Transcoded former = transcode(bytes, codePage_);
    return replaceWith(std::string(text::byteOrderMark) + former.text + text,
                       former.exact ? nullptr : &bytes);
  }

  WriteResult result = appendAtomically(*opened.file, path_, *tail, bytes.size());
  // Until the next read the caller's records lack the new message.
  if (result.ok()) state_ = {std::nullopt, shape, false};
  return result;
}

// With a message that the caller's records lack until the next read.
WriteResult StoreFile::replaceWith(const std::string& bytes, const std::string* lost) {
  WriteResult result = replaceFile(files_, path_, bytes, lost);
  if (result.ok()) state_ = {std::nullopt, {}, false};
  return result;
}

}  // namespace store
