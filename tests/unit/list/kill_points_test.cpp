#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <map>

#include "support/fake_code_pages.h"
#include "support/filing_desk.h"
#include "support/memory_file_system.h"
#include "support/posix_file_system.h"
#include "support/stepped_files.h"

// The program ended before and after every single file operation of every change of the stores. What happens
// after one operation is what happens before the next; the last point is the end of the change.
namespace {

namespace fs = std::filesystem;
using store::Folder;
using support::FilingDesk;
using support::FilingOperation;
using support::MemoryFileSystem;
using support::SteppedFiles;
using Records = std::vector<store::SmsRecord>;
using Files = std::map<std::string, std::string>;  // bytes by name
using Folders = std::map<Folder, Records>;

constexpr std::array pcFolders{Folder::PInbox, Folder::PSent, Folder::PDraft};
constexpr int missing = -1;
constexpr std::array priorStates{missing, 0, 10, 1000};  // messages in each folder
const support::Latin1Page page;

Files priorFiles(int messages) {
  Files files;
  if (messages == missing) return files;
  for (const store::StoreName& name : store::storeNames)
    files[std::string(name.file)] = support::storeWith(name, messages);
  return files;
}

Folders recordsOf(const FilingDesk& desk) {
  Folders found;
  for (const Folder folder : pcFolders)
    found[folder].assign(desk.records(folder).begin(), desk.records(folder).end());
  return found;
}

// Where the stores lie, and what the end of the program does to them.
class Disk {
 public:
  virtual ~Disk() = default;
  virtual void put(const Files& files) = 0;
  virtual SteppedFiles& files() = 0;
  virtual std::string directory() const = 0;
  virtual std::vector<std::string> names() const = 0;
  virtual void losePower() {}

  // Runs the operation in a program that ends before that step.
  void runUntil(std::size_t last, const FilingOperation& operation) {
    struct Ended {};
    FilingDesk desk(files(), page, directory());
    files().watch([last](std::size_t step) -> std::optional<std::uint32_t> {
      if (step == last) throw Ended();
      return std::nullopt;
    });
    try {
      operation.run(desk);
    } catch (const Ended&) {
      // Nothing in between catches it or writes on its way: to the disk it is the end of the program.
    }
    const Folders tables = recordsOf(desk);
    // A message that is filed is in its table only once the file has been read again.
    EXPECT_TRUE(tables == read() || operation.name.starts_with("file-"));
    losePower();
  }

  Folders read() {
    files().watch({});
    const FilingDesk desk(files(), page, directory());
    EXPECT_TRUE(desk.isRead());
    return recordsOf(desk);
  }
  // How many steps it takes undisturbed.
  std::size_t run(const FilingOperation& operation) {
    FilingDesk desk(files(), page, directory());
    files().watch({});
    EXPECT_TRUE(operation.run(desk));
    return files().steps();
  }
};

class MemoryDisk : public Disk {
 public:
  // With the power gone, what was not flushed is lost too.
  explicit MemoryDisk(bool losesPower) : losesPower_(losesPower) {}

  void put(const Files& files) override {
    auto memory = std::make_unique<MemoryFileSystem>();
    memory_ = memory.get();
    for (const auto& [name, bytes] : files) memory_->put(name, bytes);
    files_ = std::make_unique<SteppedFiles>(std::move(memory));
  }
  SteppedFiles& files() override { return *files_; }
  std::string directory() const override { return {}; }
  std::vector<std::string> names() const override { return memory_->paths(); }
  void losePower() override {
    if (losesPower_) memory_->restart();
  }

 private:
  bool losesPower_;
  MemoryFileSystem* memory_ = nullptr;
  std::unique_ptr<SteppedFiles> files_;
};

class PosixDisk : public Disk {
 public:
  PosixDisk() {
    // Memory does: what an ended process has written, the system keeps, on whatever disk.
    std::string pattern = (fs::exists("/dev/shm") ? "/dev/shm/" : testing::TempDir()) + "kill-points-XXXXXX";
    folder_ = mkdtemp(pattern.data());
  }
  ~PosixDisk() override { fs::remove_all(folder_); }

  void put(const Files& files) override {
    for (const auto& entry : fs::directory_iterator(folder_)) fs::remove(entry);
    for (const auto& [name, bytes] : files) std::ofstream(folder_ / name, std::ios::binary) << bytes;
  }
  SteppedFiles& files() override { return files_; }
  std::string directory() const override { return folder_.string() + "/"; }
  std::vector<std::string> names() const override {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder_)) names.push_back(entry.path().filename());
    return names;
  }

 private:
  fs::path folder_;
  SteppedFiles files_{std::make_unique<support::PosixFileSystem>()};
};

// All that may be found while the operation is under way, in this order and each at some time.
std::vector<Folders> stagesOf(const FilingOperation& operation, const Folders& before, const Folders& after) {
  std::vector<Folders> stages{before};
  const auto pass = [&](const Folders& next) {
    if (next != stages.back()) stages.push_back(next);
  };
  Folders between = before;
  if (operation.name == "delete") {
    Records& inbox = between[Folder::PInbox];
    for (const std::size_t slot : support::deletedSlots) {
      if (slot < inbox.size()) inbox.erase(inbox.begin() + static_cast<std::ptrdiff_t>(slot));
      pass(between);
    }
  }
  // Nothing leaves the inbox before the other folders have what they are to get.
  between = after;
  between[Folder::PInbox] = stages.back().at(Folder::PInbox);
  pass(between);
  pass(after);
  return stages;
}

// Returns the number of kill points.
std::size_t killEverywhere(Disk& disk) {
  std::size_t points = 0;
  for (const int messages : priorStates) {
    for (const FilingOperation& operation : support::filingOperations) {
      disk.put(priorFiles(messages));
      const Folders before = disk.read();
      const std::size_t steps = disk.run(operation);
      const Folders after = disk.read();
      const auto stages = stagesOf(operation, before, after);
      const bool deletes = operation.name == "delete";
      EXPECT_EQ(stages.size() > 1, messages >= 10 || operation.name.starts_with("file-"));
      EXPECT_LE(stages.size(), 1 + (deletes ? std::size(support::deletedSlots) : 2));
      EXPECT_GE(steps, 5 * (deletes ? stages.size() - 1 : 1));
      std::size_t stage = 0;
      for (std::size_t step = 0; step <= steps; ++step, ++points) {
        SCOPED_TRACE(std::string(operation.name) + " with " + std::to_string(messages) + " messages, step " +
                     std::to_string(step));
        disk.put(priorFiles(messages));
        disk.runUntil(step, operation);
        const Folders found = disk.read();
        if (stage + 1 < stages.size() && found == stages[stage + 1]) ++stage;
        EXPECT_TRUE(found == stages[stage]) << "after stage " << stage;

        // The next program can do it, and clears away what the ended one has left beside the stores.
        if (found == before) {
          disk.run(operation);
          EXPECT_TRUE(disk.read() == after);
          for (const std::string& name : disk.names()) EXPECT_TRUE(name.ends_with(".dat")) << name;
        }
      }
      EXPECT_EQ(stage, stages.size() - 1) << operation.name << " with " << messages;
    }
  }
  std::cout << points << " kill points\n";
  return points;
}

TEST(KillPoints, ProgramEndedInMemory) {
  MemoryDisk disk(false);
  EXPECT_GT(killEverywhere(disk), 200U);
}

TEST(KillPoints, PowerLostInMemory) {
  MemoryDisk disk(true);
  EXPECT_GT(killEverywhere(disk), 200U);
}

TEST(KillPoints, ProgramEndedOnDisk) {
  PosixDisk disk;
  EXPECT_GT(killEverywhere(disk), 200U);
}

TEST(KillPoints, ADiskThatFailsForGoodLosesNothing) {
  MemoryDisk disk(false);
  for (const FilingOperation& operation : support::filingOperations) {
    if (operation.name.starts_with("file-")) continue;
    disk.put(priorFiles(10));
    const Folders before = disk.read();
    const std::size_t steps = disk.run(operation);
    const auto stages = stagesOf(operation, before, disk.read());
    for (std::size_t first = 0; first < steps; ++first) {
      SCOPED_TRACE(std::string(operation.name) + " from step " + std::to_string(first));
      disk.put(priorFiles(10));
      FilingDesk desk(disk.files(), page, {});
      disk.files().watch(
          [=](std::size_t step) { return step >= first ? std::optional<std::uint32_t>(112) : std::nullopt; });
      EXPECT_FALSE(operation.run(desk));
      const Folders found = disk.read();
      EXPECT_TRUE(found == recordsOf(desk));
      EXPECT_NE(std::ranges::find(stages, found), stages.end());
    }
  }
}

}  // namespace
