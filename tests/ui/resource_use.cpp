#include "resource_use.h"

#include <windows.h>

#include <psapi.h>
#include <winternl.h>

#include <ostream>
#include <vector>

extern "C" PPEB NTAPI RtlGetCurrentPeb();

// Wine gives no figures for GDI objects, user objects and handles; there they are counted one by one.
namespace {

// The process's table of GDI objects, which the system keeps for debuggers.
struct GdiEntry {
  ULONGLONG object;
  ULONG owner;
  USHORT unique;
  UCHAR type;
  UCHAR flags;
  ULONGLONG userPointer;
};
constexpr std::size_t gdiTableOffset = 0xF8;  // in the process's environment block, 64 bits
constexpr int gdiTableSize = 0x4000;

int gdiObjects() {
  if (const DWORD known = GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS)) return static_cast<int>(known);
  const auto* const block = reinterpret_cast<const char*>(RtlGetCurrentPeb());
  const auto* const table = *reinterpret_cast<const GdiEntry* const*>(block + gdiTableOffset);
  int count = 0;
  for (int i = 0; i < gdiTableSize; ++i) count += table[i].type != 0;
  return count;
}

// A handle of 16 bits stands for whatever window or menu has that place in the system's table.
int userObjects() {
  if (const DWORD known = GetGuiResources(GetCurrentProcess(), GR_USEROBJECTS))
    return static_cast<int>(known);
  int count = 0;
  for (UINT_PTR place = 0x20; place < 0xFFFF; place += 2) {
    DWORD process = 0;
    const auto window = reinterpret_cast<HWND>(place);
    if (GetWindowThreadProcessId(window, &process)) {
      count += process == GetCurrentProcessId();
      continue;
    }
    count += IsMenu(reinterpret_cast<HMENU>(place)) != 0;
  }
  return count;
}

int handles() {
  DWORD known = 0;
  if (GetProcessHandleCount(GetCurrentProcess(), &known) && known > 1) return static_cast<int>(known);
  int count = 0;
  DWORD flags = 0;
  for (UINT_PTR value = 4; value < 0x4000; value += 4)
    count += GetHandleInformation(reinterpret_cast<HANDLE>(value), &flags) != 0;
  return count;
}

long long heapBytes() {
  std::vector<HANDLE> heaps(GetProcessHeaps(0, nullptr));
  heaps.resize(GetProcessHeaps(static_cast<DWORD>(heaps.size()), heaps.data()));
  long long bytes = 0;
  for (const HANDLE heap : heaps) {
    PROCESS_HEAP_ENTRY entry{};
    while (HeapWalk(heap, &entry))
      if (entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) bytes += entry.cbData;
  }
  return bytes;
}

}  // namespace

ResourceUse resourceUse() {
  PROCESS_MEMORY_COUNTERS memory{};
  GetProcessMemoryInfo(GetCurrentProcess(), &memory, sizeof memory);
  return {heapBytes(), static_cast<long long>(memory.PagefileUsage), gdiObjects(), userObjects(), handles()};
}

std::ostream& operator<<(std::ostream& out, const ResourceUse& use) {
  return out << "heap " << use.heapBytes << ", private " << use.privateBytes << ", GDI " << use.gdiObjects
             << ", user " << use.userObjects << ", handles " << use.handles;
}
