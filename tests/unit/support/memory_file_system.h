#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
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
    fail,        // the step reports an error; a write has then stored half of its bytes
    killBefore,  // the program ends before the step: nothing that follows happens,
    killAfter    // or after it; what was not flushed is lost
  };
  static constexpr std::uint32_t faultCode = 112;
  static constexpr std::uint32_t lockedCode = 32;

  // The step that goes wrong, 0 being the next one. May be called for several steps.
  void inject(Fault fault, std::size_t step) { faults_[steps_.size() + step] = fault; }
  // Steps taken so far, as "write pcInbox.dat.new".
  const std::vector<std::string>& steps() const { return steps_; }
  void forgetSteps() { steps_.clear(); }
  void lock(const std::string& path) { locked_.insert(path); }
  void unlock(const std::string& path) { locked_.erase(path); }

  void put(const std::string& path, std::string bytes) { files_[path] = {bytes, bytes}; }
  // Nothing when there is no such file.
  std::optional<std::string> bytes(const std::string& path) const;
  std::vector<std::string> paths() const;
  // The disk as it is found after the program ended: alive again, without faults.
  void restart();

  store::FileStatus exists(const std::string& path) override;
  store::OpenedFile openForReading(const std::string& path) override;
  store::OpenedFile create(const std::string& path) override;
  store::OpenedFile openForAppending(const std::string& path) override;
  store::FileStatus replace(const std::string& from, const std::string& to) override;
  store::FileStatus remove(const std::string& path) override;
  std::string describe(std::uint32_t code) const override { return "error " + std::to_string(code); }

 private:
  friend class MemoryFile;
  struct Content {
    std::string bytes;
    std::string flushed;
  };

  store::FileStatus step(store::FileOperation operation, const std::string& path,
                         const std::function<void()>& effect, const std::function<void()>& partly = {});
  store::OpenedFile open(const std::string& path);

  std::map<std::string, Content> files_;
  std::set<std::string> locked_;
  std::vector<std::string> steps_;
  std::map<std::size_t, Fault> faults_;
  bool alive_ = true;
};

}  // namespace support
