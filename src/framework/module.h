#pragma once

#include <windows.h>

#include <cstdint>
#include <string>

#include "framework/handles.h"

// Modules and the system's own words for an error.
namespace framework {

// Folder of the program file, ending in a backslash (UTF-8).
std::string moduleDirectory();

// Makes LoadLibrary look in the program's own folder and the system's only, never in the current one.
void restrictLibrarySearch();

// A library from that folder (a full path ending in a backslash), else from the system's folder; null when
// neither has one that can be loaded. What it needs itself comes from the same two places.
UniqueModule loadLibrary(const std::string& folder, const std::string& name);

// A library of the system itself.
UniqueModule loadSystemLibrary(const std::string& name);

// A library opened for its resources only, by full path; none of its code runs.
UniqueModule loadResourceLibrary(const std::string& path);

// The system's text for an error number, without a line end; the number itself when it has none.
std::string systemErrorText(std::uint32_t code);

// A function of a system library that few commands need. Such libraries bring many more with them, so they
// come in with the first of these commands instead of with the program, and stay for good: they leave threads
// behind. Null when there is none.
template <class Function>
Function* lateFunction(const char* library, const char* name) {
  const HMODULE module = loadSystemLibrary(library).release();
  if (!module) return nullptr;
  return reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(module, name)));
}

}  // namespace framework
