// Who may include whom, proved from the sources.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <set>

namespace {

namespace fs = std::filesystem;
using Rooms = std::set<std::string>;

// The rooms that each room may include, besides itself.
const std::map<std::string, Rooms> allowed{
    {"store", {}},
    {"framework", {}},
    {"phonelink", {"store", "framework"}},
    {"skin", {"store", "framework", "resources"}},
    {"list", {"skin", "phonelink", "store", "framework", "resources"}},
    {"tree", {"list", "skin", "phonelink", "store", "framework", "resources"}},
    {"dialogs", {"list", "skin", "phonelink", "store", "framework", "resources"}},
    {"app", {"dialogs", "tree", "list", "skin", "phonelink", "store", "framework", "resources"}},
};

// What a line includes, with quotes or angle brackets; empty when it includes nothing.
std::string includedBy(const std::string& line) {
  constexpr std::string_view directive = "#include ";
  if (!line.starts_with(directive)) return {};
  const std::size_t begin = directive.size() + 1;
  return line.substr(begin, line.find_first_of("\">", begin) - begin);
}

// Calls visit(file, included name) for every include below a folder.
template <class Visit>
void forEachInclude(const fs::path& folder, Visit visit) {
  std::size_t includes = 0;
  for (const auto& entry : fs::recursive_directory_iterator(folder)) {
    if (entry.path().extension() != ".h" && entry.path().extension() != ".cpp") continue;
    std::ifstream file(entry.path());
    for (std::string line; std::getline(file, line);) {
      const std::string name = includedBy(line);
      if (name.empty()) continue;
      ++includes;
      visit(entry.path(), name);
    }
  }
  EXPECT_GT(includes, 0U) << folder;
}

std::string roomOf(const std::string& included) {
  return included.substr(0, included.find('/'));
}

TEST(Rooms, IncludeDownwardsOnly) {
  const fs::path sources = QUILLET_SOURCES;
  for (const auto& [room, below] : allowed) {
    forEachInclude(sources / "src" / room,
                   [&, room = room, &below = below](const fs::path& file, const std::string& name) {
                     const std::string other = roomOf(name);
                     EXPECT_TRUE(!allowed.contains(other) || other == room || below.contains(other))
                         << file << " includes " << name;
                     EXPECT_NE(other, "handset") << file;
                   });
  }
}

TEST(Rooms, HandsetSharesOneHeaderWithTheProgram) {
  forEachInclude(fs::path(QUILLET_SOURCES) / "handset", [](const fs::path& file, const std::string& name) {
    EXPECT_TRUE(!allowed.contains(roomOf(name)) || name == "phonelink/entry_layouts.h")
        << file << ' ' << name;
  });
}

TEST(Rooms, StoreAndEntryLayoutsKnowNoWindows) {
  const auto check = [](const fs::path& file, const std::string& name) {
    EXPECT_NE(name, "windows.h") << file;
  };
  forEachInclude(fs::path(QUILLET_SOURCES) / "src" / "store", check);
  forEachInclude(fs::path(QUILLET_SOURCES) / "src" / "phonelink",
                 [&](const fs::path& file, const std::string& name) {
                   if (file.stem() == "entry_layouts") check(file, name);
                 });
}

}  // namespace
