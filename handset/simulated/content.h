#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "handset/handset.h"

namespace handset {

// What a simulated handset does, as its file's [settings] say.
struct Settings {
  bool open = true;
  bool init = true;
  bool phonebook = true;
  bool unicode = true;
  int delay = 0;                         // milliseconds that every call takes
  std::vector<std::string> unreachable;  // numbers to which sending fails
};

enum class Store { sim, phone };

struct StoredMessage {
  Store store = Store::sim;
  Message message;

  bool operator==(const StoredMessage&) const = default;
};

struct StoredContact {
  Store store = Store::sim;
  Contact contact;
};

struct Problem {
  std::size_t line = 0;  // counted from 1
  std::string what;
};

// A simulated handset's file, taken apart. In file order; every message has a storage number.
struct Content {
  Settings settings;
  std::vector<StoredMessage> messages;
  std::vector<StoredContact> contacts;
  std::vector<Problem> problems;
};

// Bounds for a file that was not meant well. What lies beyond is left out and named among the problems.
inline constexpr std::size_t maxContentSize = 1U << 20U;  // bytes of the file that are looked at
inline constexpr std::size_t maxContentItems = 4000;      // messages and contacts, each
inline constexpr std::size_t maxContentProblems = 200;
inline constexpr int maxContentDelay = 60'000;

// Never fails: what it does not understand is passed over and becomes a problem.
Content parseContent(std::string_view file);
// The same file's settings alone, in less time.
Settings parseSettings(std::string_view file);

}  // namespace handset
