#include <gtest/gtest.h>

#include "store/folder_state.h"
#include "store/folder_table.h"
#include "store/store_names.h"

namespace {

using store::Folder;
using store::TreeItem;

class FolderStateTest : public testing::Test {
 protected:
  FolderStateTest() {
    store::resetFolderState();
    state.mobileGroup = item(0);
    state.pcGroup = item(1);
    for (const Folder folder : store::allFolders) state.items[position(folder)] = item(2 + position(folder));
    store::joinFolderPaths(state, {.mobile = "Mobile",
                                   .mobileInbox = "Inbox",
                                   .mobileOutbox = "Outbox",
                                   .pc = "PC",
                                   .pcInbox = "Inbox",
                                   .pcSent = "Gesendet",
                                   .pcDraft = "Entw\xC3\xBCrfe"});
  }
  ~FolderStateTest() override { store::resetFolderState(); }

  TreeItem item(std::size_t i) { return reinterpret_cast<TreeItem>(&places_[i]); }

  store::FolderState& state = store::folderState();

 private:
  char places_[8] = {};
};

TEST_F(FolderStateTest, FoldersAndGroupsAreKnownByTheirItems) {
  for (const Folder folder : store::allFolders) {
    EXPECT_EQ(folderOfItem(state, item(2 + position(folder))), folder);
    EXPECT_FALSE(isGroup(state, item(2 + position(folder))));
  }
  for (const TreeItem other : {item(0), item(1), item(7), TreeItem{}}) {
    EXPECT_EQ(folderOfItem(state, other), std::nullopt);
  }
  EXPECT_TRUE(isGroup(state, item(0)));
  EXPECT_TRUE(isGroup(state, item(1)));
  EXPECT_FALSE(isGroup(state, item(7)));

  // Before the tree has been walked, no item is not an item.
  store::resetFolderState();
  EXPECT_EQ(folderOfItem(state, nullptr), std::nullopt);
  EXPECT_FALSE(isGroup(state, nullptr));
}

TEST_F(FolderStateTest, FoldersAreFoundInPathTexts) {
  const struct {
    const char* path;
    std::optional<Folder> folder;
  } cases[] = {
      {"Mobile\\Inbox(2)", Folder::MInbox},
      {"Mobile\\Outbox", Folder::MOutbox},
      {"PC\\Inbox(12)", Folder::PInbox},
      {"Root\\PC\\Gesendet(4)", Folder::PSent},
      {"PC\\Entw\xC3\xBCrfe(0)", Folder::PDraft},
      {"PC\\Inbox and Mobile\\Inbox", Folder::MInbox},  // folder order decides, not the place in the text
      {"Mobile", std::nullopt},
      {"PC", std::nullopt},
      {"Inbox(2)", std::nullopt},
      {"", std::nullopt},
  };
  for (const auto& c : cases) EXPECT_EQ(folderInPath(state, c.path), c.folder) << c.path;

  store::resetFolderState();
  EXPECT_EQ(folderInPath(state, "PC\\Inbox"), std::nullopt);
}

TEST_F(FolderStateTest, Platform98GoesByTheSelectedPath) {
  state.selectedItem = item(2 + position(Folder::PSent));
  state.selectedPath = "PC\\Inbox(1)";
  EXPECT_EQ(selectedFolder(state), Folder::PSent);
  state.windows98Mode = true;
  EXPECT_EQ(selectedFolder(state), Folder::PInbox);
}

TEST_F(FolderStateTest, StoresLieInTheModuleDirectory) {
  store::setStorePaths(state, "C:\\Qu\xC3\xAEll\\");
  EXPECT_EQ(state.storePaths[position(Folder::PInbox)], "C:\\Qu\xC3\xAEll\\pcInbox.dat");
  EXPECT_EQ(state.storePaths[position(Folder::PSent)], "C:\\Qu\xC3\xAEll\\pcSent.dat");
  EXPECT_EQ(state.storePaths[position(Folder::PDraft)], "C:\\Qu\xC3\xAEll\\pcDraft.dat");
  EXPECT_TRUE(state.storePaths[position(Folder::MInbox)].empty());
  for (const store::StoreName& name : store::storeNames) EXPECT_EQ(&store::storeName(name.folder), &name);
}

TEST(FolderTableTest, GrowsAndClosesGaps) {
  store::FolderTables tables;
  store::FolderTable& table = tables[Folder::PDraft];
  EXPECT_EQ(table.append(), (store::SmsRecord{.Content = "", .Time = "", .Phone = "", .Index = -1}));
  for (int i = 1; i < 3000; ++i) table.append().Index = i;
  table.erase(0);
  table.erase(1000);
  ASSERT_EQ(table.size(), 2998u);
  EXPECT_EQ(table[0].Index, 1);
  EXPECT_EQ(table[1000].Index, 1002);
  EXPECT_EQ(table.records().back().Index, 2999);
  EXPECT_TRUE(tables[Folder::PSent].empty());
  table.clear();
  EXPECT_TRUE(table.empty());
}

}  // namespace
