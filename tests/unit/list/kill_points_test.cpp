#include <gtest/gtest.h>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
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
    losePower();
  }

  std::map<Folder, Records> read() {
    files().watch({});
    const FilingDesk desk(files(), page, directory());
    EXPECT_TRUE(desk.isRead());
    std::map<Folder, Records> found;
    for (const Folder folder : pcFolders)
      found[folder].assign(desk.records(folder).begin(), desk.records(folder).end());
    return found;
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

void expectOldOrNew(std::map<Folder, Records>& found, std::map<Folder, Records>& before,
                    std::map<Folder, Records>& after) {
  for (const Folder folder : pcFolders) {
    EXPECT_TRUE(found[folder] == before[folder] || found[folder] == after[folder])
        << "folder " << store::position(folder) << " has " << found[folder].size() << " messages";
  }
  // Nothing leaves the inbox before the other folders have what they are to get.
  EXPECT_TRUE(found[Folder::PInbox] == before[Folder::PInbox] ||
              found[Folder::PSent] == after[Folder::PSent]);
}

// Returns the number of kill points.
std::size_t killEverywhere(Disk& disk) {
  std::size_t points = 0;
  for (const int messages : priorStates) {
    for (const FilingOperation& operation : support::filingOperations) {
      disk.put(priorFiles(messages));
      auto before = disk.read();
      const std::size_t steps = disk.run(operation);
      EXPECT_GE(steps, 5U);
      auto after = disk.read();
      bool sawOld = false;
      bool sawNew = false;
      for (std::size_t step = 0; step <= steps; ++step, ++points) {
        SCOPED_TRACE(std::string(operation.name) + " with " + std::to_string(messages) + " messages, step " +
                     std::to_string(step));
        disk.put(priorFiles(messages));
        disk.runUntil(step, operation);
        auto found = disk.read();
        expectOldOrNew(found, before, after);
        sawOld = sawOld || found == before;
        sawNew = sawNew || found == after;

        // The next program can do it, and clears away what the ended one has left beside the stores.
        if (found == before) {
          disk.run(operation);
          EXPECT_TRUE(disk.read() == after);
          for (const std::string& name : disk.names()) EXPECT_TRUE(name.ends_with(".dat")) << name;
        }
      }
      EXPECT_TRUE(sawOld && sawNew) << operation.name << " with " << messages;
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

TEST(KillPoints, AMoveOnADiskThatFailsForGoodLosesNothing) {
  const FilingOperation& move = support::filingOperations.back();
  MemoryDisk disk(false);
  disk.put(priorFiles(10));
  auto before = disk.read();
  const std::size_t steps = disk.run(move);
  auto after = disk.read();
  for (std::size_t first = 0; first < steps; ++first) {
    SCOPED_TRACE("from step " + std::to_string(first));
    disk.put(priorFiles(10));
    FilingDesk desk(disk.files(), page, {});
    disk.files().watch(
        [=](std::size_t step) { return step >= first ? std::optional<std::uint32_t>(112) : std::nullopt; });
    EXPECT_FALSE(move.run(desk));
    auto found = disk.read();
    expectOldOrNew(found, before, after);
  }
}

}  // namespace
