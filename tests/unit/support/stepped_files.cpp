#include "support/stepped_files.h"

#include <string_view>
#include <utility>

namespace support {

using store::FileOperation;
using store::FileStatus;
using store::OpenedFile;

namespace {

FileStatus failed(FileOperation operation, std::uint32_t code) {
  return {store::FileOutcome::failed, operation, code};
}

}  // namespace

class SteppedFile : public store::File {
 public:
  SteppedFile(SteppedFiles& files, std::unique_ptr<store::File> inner)
      : files_(files), inner_(std::move(inner)) {}

  FileStatus readBlocks(const TakeBlock& take) override {
    if (const auto code = files_.step()) return failed(FileOperation::read, *code);
    return inner_->readBlocks(take);
  }
  FileStatus write(std::string_view bytes) override {
    const auto code = files_.step();
    if (!code) return inner_->write(bytes);
    inner_->write(bytes.substr(0, bytes.size() / 2));
    return failed(FileOperation::write, *code);
  }
  FileStatus flush() override {
    if (const auto code = files_.step()) return failed(FileOperation::flush, *code);
    return inner_->flush();
  }
  FileStatus truncate(std::uint64_t length) override {
    if (const auto code = files_.step()) return failed(FileOperation::truncate, *code);
    return inner_->truncate(length);
  }
  FileStatus close() override {
    const auto code = files_.step();
    const FileStatus status = inner_->close();
    return code ? failed(FileOperation::close, *code) : status;
  }

 private:
  SteppedFiles& files_;
  std::unique_ptr<store::File> inner_;
};

OpenedFile SteppedFiles::open(FileOperation operation, const std::function<OpenedFile()>& inner) {
  if (const auto code = step()) return {failed(operation, *code), nullptr};
  OpenedFile opened = inner();
  if (opened.file) opened.file = std::make_unique<SteppedFile>(*this, std::move(opened.file));
  return opened;
}

FileStatus SteppedFiles::exists(const std::string& path) {
  if (const auto code = step()) return failed(FileOperation::exists, *code);
  return inner_->exists(path);
}

OpenedFile SteppedFiles::openForReading(const std::string& path) {
  return open(FileOperation::open, [&] { return inner_->openForReading(path); });
}

OpenedFile SteppedFiles::create(const std::string& path) {
  return open(FileOperation::create, [&] { return inner_->create(path); });
}

OpenedFile SteppedFiles::openForAppending(const std::string& path) {
  return open(FileOperation::open, [&] { return inner_->openForAppending(path); });
}

FileStatus SteppedFiles::replace(const std::string& from, const std::string& to) {
  if (const auto code = step()) return failed(FileOperation::replace, *code);
  return inner_->replace(from, to);
}

FileStatus SteppedFiles::remove(const std::string& path) {
  if (const auto code = step()) return failed(FileOperation::remove, *code);
  return inner_->remove(path);
}

}  // namespace support
