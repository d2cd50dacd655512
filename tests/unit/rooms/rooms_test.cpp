#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

TEST(Rooms, IncludeDownwardsOnly) {
  const std::string base = "text framework resources ";
  const std::string model = base + "store phonelink skin ";
  const std::string directive = "#include \"";
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
      for (std::string line; std::getline(file, line);) {
        const std::size_t slash = line.find('/');
        if (!line.starts_with(directive) || slash == line.npos) continue;
        ++includes;
        const std::string other = line.substr(directive.size(), slash - directive.size());
        EXPECT_TRUE(room.ends_with(other) || below.find(other) != below.npos ||
                    (room == "handset" && line.find("\"phonelink/entry_layouts.h\"") != line.npos))
            << entry.path() << ": " << line;
      }
    }
    EXPECT_GT(includes, 0) << room;
  }
}
