#include "store/folders.h"

#include <gtest/gtest.h>

#include <functional>
#include <optional>

#include "store/folder_state.h"
#include "support/fake_code_pages.h"
#include "support/memory_file_system.h"
#include "support/messages.h"

namespace {

using namespace support;
using store::Folder;
using store::Folders;
using Fault = MemoryFileSystem::Fault;
using Outcome = store::WriteResult::Outcome;
using Slots = std::vector<std::size_t>;

constexpr Folder pcFolders[] = {Folder::PInbox, Folder::PSent, Folder::PDraft};
const Latin1Page page;

// A disk with the messages a to e in PInbox, x in PSent, and an outbox with h on the handset.
struct Desk {
  Desk() {
    std::string inbox = "[PCINBOX] \r\n";
    for (const char* text : {"a", "b", "c", "d", "e"}) inbox += lines(text);
    files.put("pcInbox.dat", inbox);
    files.put("pcSent.dat", "[PCSENT] \r\n" + lines("x"));
    load();
  }
  void load() {
    folders.emplace(files, page, "");
    for (const Folder folder : pcFolders) EXPECT_TRUE(folders->reload(folder).ok());
    store::FolderTable outbox;
    outbox.append(message("h"));
    folders->fill(Folder::MOutbox, std::move(outbox));
  }
  // What the tables hold, as "abcde|x|".
  std::string tables() const {
    std::string all;
    for (const Folder folder : pcFolders) {
      for (const std::string& text : contents((*folders)[folder])) all += text;
      if (folder != Folder::PDraft) all += '|';
    }
    return all;
  }

  MemoryFileSystem files;
  std::optional<Folders> folders;
};

struct Change {
  const char* name;
  std::function<store::WriteResult(Folders&)> run;
  std::string after;
  std::string between = {};  // another state in which a program that ends midway may leave the files
};

auto filed(Folder folder, const char* text) {
  return [=](Folders& f) { return f.append(folder, message(text)); };
}
auto replaced(std::vector<store::SmsRecord> records) {
  return [=](Folders& f) {
    f.remember({Folder::PInbox});
    return f.replace(Folder::PInbox, records);
  };
}
auto moved(Folder source, Folder target, Slots slots) {
  return [=](Folders& f) {
    f.remember({source, target});
    return f.move(source, target, slots);
  };
}

const Change changes[] = {
    {"file in a store that is there", filed(Folder::PSent, "y"), "abcde|xy|"},
    {"file in a store that is not", filed(Folder::PDraft, "y"), "abcde|x|y"},
    {"file beyond the code page", filed(Folder::PSent, "€"), "abcde|x€|"},
    {"delete",
     [](Folders& f) {
       f.remember({Folder::PInbox});
       return f.erase(Folder::PInbox, 1);
     },
     "acde|x|"},
    {"sort", replaced({message("e"), message("b")}), "eb|x|"},
    {"delete all", replaced({}), "|x|"},
    {"move", moved(Folder::PInbox, Folder::PSent, {4, 2, 1}), "ad|xecb|", "abcde|xecb|"},
    {"copy", moved(Folder::MOutbox, Folder::PDraft, {0, 7}), "abcde|x|h"},
};

// Every step of every change fails, or the program ends before or after it, or memory runs out there. Files
// hold all of the old or all of the new, tables say what the files say, and the change can be made again.
TEST(Folders, EveryStepOfEveryChangeMayGoWrong) {
  for (const Change& change : changes) {
    Desk undisturbed;
    const std::size_t before = undisturbed.files.steps().size();
    ASSERT_TRUE(change.run(*undisturbed.folders).ok());
    const std::size_t steps = undisturbed.files.steps().size() - before;
    const std::string untouched = undisturbed.tables();
    undisturbed.load();
    ASSERT_EQ(undisturbed.tables(), change.after) << change.name;
    const bool filing = std::string_view(change.name).starts_with("file");
    // A filed message is in the table only once the file has been read again.
    ASSERT_EQ(untouched, filing ? "abcde|x|" : change.after) << change.name;

    for (std::size_t step = 0; step < steps; ++step) {
      for (const Fault fault : {Fault::fail, Fault::outOfMemory, Fault::killBefore, Fault::killAfter}) {
        SCOPED_TRACE(std::string(change.name) + ", step " + std::to_string(step) + ", fault " +
                     std::to_string(static_cast<int>(fault)));
        Desk desk;
        desk.files.inject(fault, step);
        const store::WriteResult result = change.run(*desk.folders);
        const bool killed = fault == Fault::killBefore || fault == Fault::killAfter;
        const std::string told = desk.tables();
        desk.files.restart();
        desk.load();
        const std::string found = desk.tables();
        if (killed) {
          // The answer has reached nobody.
          EXPECT_TRUE(found == change.after || found == "abcde|x|" || found == change.between) << found;
        } else {
          EXPECT_EQ(found, result.ok() ? change.after : "abcde|x|");
          EXPECT_EQ(told, filing ? "abcde|x|" : found);
        }
        if (found == "abcde|x|") {
          EXPECT_TRUE(change.run(*desk.folders).ok());
          desk.load();
          EXPECT_EQ(desk.tables(), change.after);
        }
        for (const std::string& path : desk.files.paths()) EXPECT_EQ(path.find(".unread"), path.npos) << path;
      }
    }
  }
}

TEST(Folders, EveryChangeCanBeTakenBackOnceUnlessAFileHasChanged) {
  for (const Change& change : changes) {
    for (const bool foreign : {false, true}) {
      Desk desk;
      change.run(*desk.folders);
      if (!desk.folders->canUndo()) continue;
      if (foreign) desk.files.put("pcInbox.dat", "x"), desk.files.put("pcDraft.dat", "x");
      EXPECT_EQ(desk.folders->undo().outcome, foreign ? Outcome::changed : Outcome::done) << change.name;
      EXPECT_EQ(desk.tables(), foreign ? change.after : "abcde|x|") << change.name;
      EXPECT_EQ(desk.folders->canUndo(), foreign);
      if (!foreign) desk.load();
      EXPECT_EQ(desk.tables(), foreign ? change.after : "abcde|x|") << change.name;
    }
  }
}

TEST(Folders, AMessageIsNotTakenForGoneWhereItsFolderHasNotBeenRead) {
  Desk desk;
  desk.folders->clear(Folder::PInbox);
  EXPECT_EQ(desk.folders->erase(Folder::PInbox, message("b")).outcome, Outcome::notRead);
}

TEST(Folders, AMoveThatCannotBeTakenBackLeavesTheMessagesInBoth) {
  Desk desk;
  // The target has been written: from here on nothing works any more.
  desk.files.inject(Fault::fail, 7, true);
  const store::WriteResult result = desk.folders->move(Folder::PInbox, Folder::PSent, Slots{1, 0});
  EXPECT_EQ(result.outcome, Outcome::inBoth);
  EXPECT_EQ(result.code, MemoryFileSystem::faultCode);
  EXPECT_EQ(result.file, "pcInbox.dat");
  EXPECT_EQ(desk.tables(), "abcde|xba|");
  // Nor does taking back a change lose them midway.
  Desk other;
  moved(Folder::PInbox, Folder::PSent, {1, 0})(*other.folders);
  other.files.inject(Fault::fail, 9, true);
  EXPECT_EQ(other.folders->undo().outcome, Outcome::inBoth);
  EXPECT_EQ(other.tables(), "abcde|xba|");
}

TEST(FolderState, FoldersAreKnownByItemsAndByPaths) {
  char places[8] = {};
  const auto item = [&](std::size_t i) { return reinterpret_cast<store::TreeItem>(&places[i]); };
  store::FolderState state;
  // Before the tree has been walked, no item is not an item, and no path is found in every text.
  EXPECT_FALSE(folderOfItem(state, nullptr) || folderInPath(state, "PC\\1") || isGroup(state, nullptr));
  state.groups = {item(0), item(1)};
  state.items = {item(2), item(3), item(4), item(5), item(6)};
  joinFolderPaths(state, [](unsigned id) {
    return id == IDS_MOBILE ? "Mobile" : id == IDS_PC ? "PC" : std::to_string((id - IDS_MOBILE) % 3);
  });
  const std::pair<const char*, int> paths[] = {{"Mobile\\1(2)", 0}, {"Mobile\\2", 1},
                                               {"PC\\1(12)", 2},    {"a\\PC\\2(4)", 3},
                                               {"PC\\0(0)", 4},     {"PC\\1, Mobile\\1", 0}};
  for (const auto& [path, place] : paths)
    EXPECT_EQ(folderInPath(state, path), store::folderRows[static_cast<std::size_t>(place)].folder) << path;
  EXPECT_FALSE(folderInPath(state, "Mobile") || folderInPath(state, "1(2)"));
  for (std::size_t i = 0; i < 8; ++i) {
    EXPECT_EQ(isGroup(state, item(i)), i < 2);
    const bool known = i >= 2 && i < 7;
    EXPECT_EQ(folderOfItem(state, item(i)),
              known ? std::optional(store::folderRows[i - 2].folder) : std::nullopt);
  }
  state.selectedItem = item(5);
  state.selectedPath = "PC\\1(1)";
  EXPECT_EQ(selectedFolder(state), Folder::PSent);
  state.windows98Mode = true;
  EXPECT_EQ(selectedFolder(state), Folder::PInbox);
}

}  // namespace
