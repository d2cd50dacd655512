#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <random>

#include "fuzz/targets.h"

namespace {

// Changes a few bytes of a good input, leaves some out or doubles some.
std::string mutated(std::string input, std::mt19937& random) {
  constexpr std::string_view telling{"\"\r\n,:+|0F>()A\0\xFF=[]; ", 20};
  for (auto change = random() % 6; change > 0 && !input.empty(); --change) {
    const std::size_t at = random() % input.size();
    const std::size_t count = random() % 9;
    if (random() % 3 == 0) input[at] = telling[random() % telling.size()];
    if (random() % 3 == 0) input.insert(at / 2, input, at, count);
    if (random() % 3 == 0) input.erase(at, count);
  }
  return input;
}

TEST(Fuzz, TargetsHoldForChangesOfTheirSeeds) {
  using Target = std::pair<std::string, void (*)(std::string_view)>;
  std::mt19937 random{20261121};
  for (const auto& [name, target] : {Target{"listings", fuzz::listings}, Target{"channel", fuzz::channel},
                                     Target{"store", fuzz::store}, Target{"settings", fuzz::settings},
                                     Target{"entries", fuzz::entries}, Target{"content", fuzz::content}})
    for (const auto& seed : std::filesystem::directory_iterator(QUILLET_SOURCES "/fuzz/seeds/" + name)) {
      std::ifstream file(seed.path(), std::ios::binary);
      const std::string bytes{std::istreambuf_iterator<char>(file), {}};
      for (int round = 0; round < 1000; ++round) target(mutated(bytes, random));
    }
}

}  // namespace
