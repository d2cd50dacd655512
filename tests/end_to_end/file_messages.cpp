// Changes the PC folders' stores by the program's own rules and files, without a window, for tests that kill
// it.
//
//   file_messages OPERATION FOLDER   reads the stores, says "ready", waits for a line, makes the change
//   file_messages make NUMBER        for each line of input, a folder: writes stores with that many messages
//   file_messages show               for each line of input, a folder: reads its stores, and says what is in
//   them
//
// Ends with 0, or 64 and above when something is wrong; a change that was not made ends with 1.
#include <windows.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>

#include "text/system.h"
#include "app/windows_files.h"
#include "support/filing_desk.h"

namespace {

using support::FilingDesk;

const app::WindowsCodePage codePage;
app::WindowsFiles files;

bool nextFolder(std::string& folder) {
  char line[1024];
  if (!std::fgets(line, sizeof line, stdin)) return false;
  folder.assign(line, std::strcspn(line, "\r\n"));
  return true;
}

int change(std::string_view name, const std::string& folder) {
  for (const support::FilingOperation& operation : support::filingOperations) {
    if (operation.name != name) continue;
    FilingDesk desk(files, codePage, folder);
    if (std::puts(desk.isRead() ? "ready" : "unread") < 0 || std::fflush(stdout) != 0) return 65;
    std::string line;
    if (!nextFolder(line)) return 66;
    const bool changed = operation.run(desk);
    TerminateProcess(GetCurrentProcess(), changed ? 0 : 1);  // at once: how it ends is no part of the change
  }
  return 64;
}

int make(int messages) {
  for (std::string folder; nextFolder(folder);) {
    for (const store::StoreName& name : store::storeNames) {
      const auto file = files.create(folder + std::string(name.file)).file;
      if (!file || !file->write(support::storeWith(name, messages)).ok()) return 68;
    }
  }
  return 0;
}

// How many messages each folder has, and a number that tells one set of them from another.
int show() {
  for (std::string folder; nextFolder(folder);) {
    const FilingDesk desk(files, codePage, folder);
    if (!desk.isRead()) return 67;
    for (const store::StoreName& name : store::storeNames) {
      std::string all;
      for (const store::SmsRecord& record : desk.records(name.folder))
        all += record.Content + '\n' + record.Phone + '\n' + record.Time + '\n' +
               std::to_string(record.Index) + '\n';
      std::printf("%u:%zx ", static_cast<unsigned>(desk.records(name.folder).size()),
                  std::hash<std::string>()(all));
    }
    std::puts("");
  }
  return 0;
}

}  // namespace

int main(int count, char** arguments) {
  const std::string_view what = count > 1 ? arguments[1] : "";
  if (what == "show") return show();
  if (count < 3) return 64;
  return what == "make" ? make(std::atoi(arguments[2])) : change(what, arguments[2]);
}
