#pragma once

#include <functional>
#include <map>
#include <memory>
#include <new>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "store/file_system.h"

namespace support {

// Files in memory that can be made to go wrong. Every operation, closing and removing included, is one step.
class MemoryFileSystem : public store::FileSystem {
 public:
  enum class Fault {
    fail,         // the step reports an error; a write has then stored half of its bytes
    killBefore,   // the program ends before the step: nothing that follows happens,
    killAfter,    // or after it; what was not flushed is lost
    outOfMemory,  // the step throws, unless it needs no memory, as those of an open file
  };
  static constexpr std::uint32_t faultCode = 112;
  static constexpr std::uint32_t lockedCode = 32;

  // The step that goes wrong, 0 being the next one, and with `on` all that follow.
  void inject(Fault fault, std::size_t step, bool on = false) { fault_ = {fault, steps_.size() + step, on}; }
  // Steps taken so far, as "write pcInbox.dat.new".
  const std::vector<std::string>& steps() const { return steps_; }
  void lock(const std::string& path) { locked_.insert(path); }
  void unlock(const std::string& path) { locked_.erase(path); }

  void put(const std::string& path, std::string bytes) { files_[path] = {bytes, bytes, ++clock_}; }
  std::string bytes(const std::string& path) const {
    const auto found = files_.find(path);
    return found == files_.end() ? "(missing)" : found->second.bytes;
  }
  std::set<std::string> paths() const {
    std::set<std::string> paths;
    for (const auto& [path, content] : files_) paths.insert(path);
    return paths;
  }
  // The disk as it is found after the program ended: alive again, without faults.
  void restart() {
    for (auto& [path, content] : files_) content.bytes = content.flushed;
    fault_.reset();
    alive_ = true;
    steps_.clear();
  }

  store::FileStatus stampOf(const std::string& path, store::FileStamp& stamp) override {
    store::FileStatus status = step("stamp", path, [] {});
    if (status.ok() && !files_.contains(path)) return missing;
    if (status.ok()) stamp = {files_[path].bytes.size(), files_[path].changed};
    return status;
  }
  store::OpenedFile openForReading(const std::string& path) override { return open(path); }
  store::OpenedFile openForAppending(const std::string& path) override { return open(path); }
  store::OpenedFile create(const std::string& path) override {
    const store::FileStatus status = step("create", path, [&] { files_[path] = {{}, {}, ++clock_}; });
    return {status, status.ok() ? std::make_unique<OpenFile>(*this, path) : nullptr};
  }
  store::FileStatus replace(const std::string& from, const std::string& to) override {
    return step("replace", to, [&] {
      files_[to] = files_[from];
      files_.erase(from);
    });
  }
  store::FileStatus remove(const std::string& path) override {
    return step("remove", path, [&] { files_.erase(path); });
  }

 private:
  struct Content {
    std::string bytes;
    std::string flushed;
    std::uint64_t changed = 0;
  };
  struct Injected {
    Fault fault;
    std::size_t step;
    bool on;
  };
  static constexpr store::FileStatus missing{store::FileOutcome::missing, 2};

  class OpenFile : public store::File {
   public:
    OpenFile(MemoryFileSystem& files, std::string path) : files_(files), path_(std::move(path)) {}

    store::FileStatus readAll(std::string& bytes) override {
      return files_.step("read", path_, [&] { bytes = content().bytes; });
    }
    store::FileStatus write(std::string_view bytes) override {
      const auto add = [&](std::size_t count) {
        content().bytes += bytes.substr(0, count);
        content().changed = ++files_.clock_;
      };
      return files_.step(
          "write", path_, [&] { add(bytes.size()); }, [&] { add(bytes.size() / 2); });
    }
    store::FileStatus flush() override {
      return files_.step("flush", path_, [&] { content().flushed = content().bytes; });
    }
    store::FileStatus truncate(std::uint64_t length) override {
      return files_.step("truncate", path_,
                         [&] { content().bytes.resize(static_cast<std::size_t>(length)); });
    }
    store::FileStatus close() override {
      return files_.step("close", path_, [] {});
    }

   private:
    Content& content() { return files_.files_[path_]; }

    MemoryFileSystem& files_;
    std::string path_;
  };

  store::OpenedFile open(const std::string& path) {
    store::FileStatus status = step("open", path, [] {});
    if (status.ok() && locked_.contains(path)) status = {store::FileOutcome::failed, lockedCode};
    if (status.ok() && !files_.contains(path)) status = missing;
    return {status, status.ok() ? std::make_unique<OpenFile>(*this, path) : nullptr};
  }

  store::FileStatus step(const char* operation, const std::string& path, const std::function<void()>& effect,
                         const std::function<void()>& partly = {}) {
    constexpr store::FileStatus failed{store::FileOutcome::failed, faultCode};
    if (!alive_) return failed;
    const std::size_t number = steps_.size();
    steps_.push_back(operation + (" " + path));
    if (!fault_ || number < fault_->step || (number > fault_->step && !fault_->on)) {
      effect();
      return {};
    }
    if (fault_->fault == Fault::outOfMemory) {
      if (std::set<std::string>{"write", "flush", "truncate", "close"}.contains(operation))
        return effect(), store::FileStatus{};
      throw std::bad_alloc();
    }
    if (fault_->fault == Fault::fail && partly) partly();
    if (fault_->fault == Fault::killAfter) effect();
    alive_ = fault_->fault == Fault::fail;
    return failed;
  }

  std::map<std::string, Content> files_;
  std::set<std::string> locked_;
  std::vector<std::string> steps_;
  std::optional<Injected> fault_;
  std::uint64_t clock_ = 0;
  bool alive_ = true;
};

}  // namespace support
