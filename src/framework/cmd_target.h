#pragma once

#include <windows.h>

#include <optional>
#include <span>

#include "framework/message_map.h"

namespace framework {

class CCmdTarget;

// One row for a command: toolbar, accelerator and update handler all ask this row.
struct CommandEntry {
  UINT id = 0;
  void (*run)(CCmdTarget& target) = nullptr;
  bool (*enabled)(const CCmdTarget& target) = nullptr;  // absent = enabled whenever it can be run
};

struct CommandMap {
  std::span<const CommandEntry> entries;
  const CommandMap* base = nullptr;
};

// A command's row and the object it acts on.
struct CommandSite {
  CCmdTarget* target;
  const CommandEntry* entry;

  bool enabled() const { return entry->enabled ? entry->enabled(*target) : entry->run != nullptr; }
  // Runs the command unless it is disabled; true when it ran.
  bool run() const {
    if (!enabled() || !entry->run) return false;
    entry->run(*target);
    return true;
  }
};

// Anything commands can be sent to: the application, the document, frames and views.
class CCmdTarget {
 public:
  CCmdTarget() = default;
  CCmdTarget(const CCmdTarget&) = delete;
  CCmdTarget& operator=(const CCmdTarget&) = delete;
  virtual ~CCmdTarget() = default;

  // The row that serves the command, here or further along this object's route.
  virtual std::optional<CommandSite> findCommand(UINT id) { return findOwnCommand(id); }

 protected:
  virtual const CommandMap* commandMap() const { return nullptr; }

  std::optional<CommandSite> findOwnCommand(UINT id) {
    for (const CommandMap* map = commandMap(); map; map = map->base)
      for (const CommandEntry& entry : map->entries)
        if (entry.id == id) return CommandSite{this, &entry};
    return std::nullopt;
  }
};

// void run(); bool enabled() const. Either may be left out.
template <auto Run, auto Enabled = nullptr>
constexpr CommandEntry command(UINT id) {
  CommandEntry entry{id, nullptr, nullptr};
  if constexpr (!std::is_null_pointer_v<decltype(Run)>) {
    entry.run = [](CCmdTarget& target) {
      (static_cast<typename detail::MethodTraits<decltype(Run)>::Owner&>(target).*Run)();
    };
  }
  if constexpr (!std::is_null_pointer_v<decltype(Enabled)>) {
    entry.enabled = [](const CCmdTarget& target) -> bool {
      return (static_cast<typename detail::MethodTraits<decltype(Enabled)>::Owner&>(target).*Enabled)();
    };
  }
  return entry;
}

}  // namespace framework
