#include "store/store_file.h"

#include <optional>
#include <utility>

#include "store/store_writer.h"
#include "store/whole_file.h"

namespace store {

namespace {

WriteResult notRead(const std::string& file) {
  return {.outcome = WriteResult::Outcome::notRead, .status = {}, .file = file, .keptCopy = {}};
}

}  // namespace

StoreFile::StoreFile(FileSystem& files, const CodePage& codePage, std::string path, std::string_view section)
    : files_(files), codePage_(codePage), path_(std::move(path)), section_(section) {}

ReadResult StoreFile::read(FolderTable& table) {
  isRead_ = false;
  FolderTable records;
  StoreReader reader(section_, codePage_, records);
  Digester digester;
  FileStatus status = readBlocks(files_, path_, [&](std::string_view block, std::size_t behind) {
    digester.take(block);
    reader.take(block, behind);
  });
  if (status.failed()) return {status, false};

  const StoreShape shape = reader.finish();
  table = std::move(records);
  known_ = {digester.digest(), shape, shape.whole};
  isRead_ = true;
  status.outcome = FileOutcome::ok;
  return {status, shape.whole};
}

WriteResult StoreFile::rewrite(std::span<const SmsRecord> records, std::span<const SmsRecord> further) {
  if (!isRead_) return notRead(path_);
  Digest present;
  FileStatus status = digestFile(files_, path_, present);
  if (status.failed()) return failure(status, path_);

  std::string former;
  bool losing = false;
  if (present != known_.bytes || !known_.held) {
    status = readFile(files_, path_, former);
    if (status.failed()) return failure(status, path_);
    losing = wouldLose(former);
  }
  StoreWriter writer(section_, codePage_);
  const auto fill = [&](File& file) { return writer.write(file, records, further); };
  WriteResult result = replaceFile(files_, path_, fill, losing ? &former : nullptr);
  if (result.ok()) known_ = {writer.digest(), {.blank = false, .marked = writer.marked()}, true};
  return result;
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

  StoreShape shape = known_.shape;
  if (digestOf(bytes) != known_.bytes) {
    FolderTable unused;
    shape = readStore(bytes, section_, codePage_, unused);
  }
  return appendTo(*opened.file, bytes, shape, group);
}

WriteResult StoreFile::appendTo(File& file, const std::string& bytes, StoreShape shape,
                                const std::string& group) {
  if (!shape.aligned) {
    file.close();
    return realign(bytes, group);
  }
  const std::string text = shape.blank ? headerLine(section_) + group : group;
  const std::optional<std::string> tail = bytesToAppend(text, shape.marked, codePage_);
  if (!tail) {
    file.close();
    const Transcoded former = transcode(bytes, codePage_);
    return replaceWith(std::string(utf8Mark) + former.text + text, former.exact ? nullptr : &bytes);
  }

  WriteResult result = appendAtomically(file, path_, *tail, bytes);
  if (!result.ok()) return result;
  // Until the next read the caller's records lack the new message.
  shape.blank = false;
  Digester digester;  // takes no memory: what is on the disk must not end in an exception
  digester.take(bytes);
  digester.take(*tail);
  known_ = {digester.digest(), shape, false};
  return result;
}

// Lines at the end would not be read back as this message: the file is made anew from what is read of it.
WriteResult StoreFile::realign(const std::string& bytes, const std::string& group) {
  FolderTable records;
  readStore(bytes, section_, codePage_, records);
  std::string text = headerLine(section_);
  appendGroups(text, records.records());
  text += group;
  return replaceWith(fileBytes(std::move(text), codePage_), &bytes);
}

// Bytes that are not the ones last read or written come from elsewhere: no record of the caller holds them.
bool StoreFile::wouldLose(const std::string& bytes) const {
  if (digestOf(bytes) == known_.bytes) return !known_.held;
  FolderTable records;
  return !readStore(bytes, section_, codePage_, records).whole || !records.empty();
}

// With a message that the caller's records lack until the next read.
WriteResult StoreFile::replaceWith(const std::string& bytes, const std::string* lost) {
  WriteResult result = replaceFile(files_, path_, bytes, lost);
  if (!result.ok()) return result;
  const StoreShape shape{.blank = false, .marked = bytes.starts_with(utf8Mark)};
  known_ = {digestOf(bytes), shape, false};
  return result;
}

}  // namespace store
