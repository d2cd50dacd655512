#pragma once

#include <string>
#include <vector>

namespace dialogs {

struct ChosenContact {
  std::string name;
  std::string number;
};

// What the New message dialog and the Address book leave for each other.
struct ComposeState {
  std::string recipients;  // numbers, each followed or separated by ";"
  std::vector<ChosenContact> chosen;
};

inline ComposeState& composeState() {
  static ComposeState state;
  return state;
}

}  // namespace dialogs
