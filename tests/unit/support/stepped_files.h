#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "store/file_system.h"

namespace support {

// Another file system whose operations can be counted, stopped and made to fail, one by one. Closing and
// removing count as well.
class SteppedFiles : public store::FileSystem {
 public:
  // Called before each operation with its number, from 0. An error code makes it fail without effect, save
  // that half of a write is stored and a file is closed all the same; it may also throw or end the process.
  using Before = std::function<std::optional<std::uint32_t>(std::size_t step)>;

  explicit SteppedFiles(std::unique_ptr<store::FileSystem> inner) : inner_(std::move(inner)) {}

  // Counts from 0 again.
  void watch(Before before) {
    before_ = std::move(before);
    steps_ = 0;
  }
  std::size_t steps() const { return steps_; }

  store::FileStatus exists(const std::string& path) override;
  store::OpenedFile openForReading(const std::string& path) override;
  store::OpenedFile create(const std::string& path) override;
  store::OpenedFile openForAppending(const std::string& path) override;
  store::FileStatus replace(const std::string& from, const std::string& to) override;
  store::FileStatus remove(const std::string& path) override;
  std::string describe(std::uint32_t code) const override { return inner_->describe(code); }

 private:
  friend class SteppedFile;
  std::optional<std::uint32_t> step() {
    const std::size_t number = steps_++;
    return before_ ? before_(number) : std::nullopt;
  }
  store::OpenedFile open(store::FileOperation operation, const std::function<store::OpenedFile()>& inner);

  std::unique_ptr<store::FileSystem> inner_;
  Before before_;
  std::size_t steps_ = 0;
};

}  // namespace support
