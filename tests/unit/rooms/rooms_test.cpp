#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <regex>

TEST(Rooms, IncludeDownwardsOnly) {
  const std::string base = "text framework resources ";
  const std::string model = base + "store phonelink skin ";
  const std::regex pattern("#include \"((\\w+)/.*)\"\r?");
  using Room = std::pair<std::string, std::string>;
  // Each room, and those that it may include besides itself.
  for (const auto& [room, below] :
       {Room{"src/text", ""}, Room{"src/framework", "text"}, Room{"src/store", "text resources"},
        Room{"src/skin", base}, Room{"src/phonelink", "text framework store"}, Room{"src/list", model},
        Room{"src/tree", model + "list"}, Room{"src/dialogs", model + "list"},
        Room{"src/app", model + "list tree dialogs"}, Room{"handset", "text"}}) {
    int includes = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(QUILLET_SOURCES "/" + room)) {
      std::ifstream file(entry.path());
      std::smatch found;
      for (std::string line; std::getline(file, line);) {
        if (!std::regex_match(line, found, pattern)) continue;
        ++includes;
        EXPECT_TRUE(room.ends_with(found[2].str()) || below.find(found[2]) != below.npos ||
                    (room == "handset" && found[1] == "phonelink/entry_layouts.h"))
            << entry.path() << ": " << line;
      }
    }
    EXPECT_GT(includes, 0) << room;
  }
}
