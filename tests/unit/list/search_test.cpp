#include "list/search.h"

#include <gtest/gtest.h>

#include "support/fake_code_pages.h"
#include "support/memory_file_system.h"
#include "support/messages.h"

namespace {

using store::Folder;

// "PSent 1" for the second row of PSent; the sent folder's rows stand the other way round.
std::string found(const store::Folders& folders, int row, bool backwards, const std::string& text) {
  const std::size_t order[] = {2, 1, 0};
  const auto hit =
      list::search(folders, {Folder::PSent, order, row}, backwards,
                   [&](const store::SmsRecord& message) { return message.Content.find(text) != text.npos; });
  if (!hit) return "nothing";
  return std::to_string(store::position(hit->folder)) + " " + std::to_string(hit->row);
}

TEST(Search, GoesOnBehindTheStartThroughAllFoldersAndRound) {
  const support::Latin1Page page;
  support::MemoryFileSystem files;
  store::Folders folders(files, page, "");
  const auto fill = [&](Folder folder, std::initializer_list<const char*> texts) {
    store::FolderTable table;
    for (const char* text : texts) table.append(support::message(text));
    folders.fill(folder, std::move(table));
  };
  fill(Folder::MInbox, {"a", "b"});
  fill(Folder::PSent, {"ax", "x", "bx"});
  fill(Folder::PDraft, {"a"});
  const std::tuple<int, bool, const char*, const char*> searches[] = {
      {-1, false, "x", "3 0"}, {0, false, "x", "3 1"},  {2, false, "a", "4 0"},    {2, false, "b", "0 1"},
      {1, false, "bx", "3 0"}, {0, false, "bx", "3 0"}, {0, true, "a", "0 0"},     {-1, true, "x", "3 2"},
      {2, true, "b", "3 0"},   {0, true, "ax", "3 2"},  {1, false, "c", "nothing"}};
  for (const auto& [row, backwards, text, expected] : searches)
    EXPECT_EQ(found(folders, row, backwards, text), expected) << row << text << backwards;
  // Without a shown folder the first of them counts too.
  const auto hit =
      list::search(folders, {}, true, [](const store::SmsRecord& m) { return m.Content == "b"; });
  EXPECT_TRUE(hit && hit->folder == Folder::MInbox && hit->row == 1);
}

}  // namespace
