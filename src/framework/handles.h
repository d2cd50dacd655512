#pragma once

#include <windows.h>

#include <commctrl.h>

#include <memory>
#include <type_traits>

// One owning alias for each kind of Windows handle in use. A child window is borrowed from its parent and
// has no owner here.
namespace framework {

struct Release {
  void operator()(HBITMAP bitmap) const { DeleteObject(bitmap); }
  void operator()(HDC memory) const { DeleteDC(memory); }
  void operator()(HFONT font) const { DeleteObject(font); }
  void operator()(HIMAGELIST list) const { ImageList_Destroy(list); }
  void operator()(HMENU menu) const { DestroyMenu(menu); }
  void operator()(HMODULE module) const { FreeLibrary(module); }
  void operator()(HANDLE handle) const { CloseHandle(handle); }
};

template <class Handle>
using Unique = std::unique_ptr<std::remove_pointer_t<Handle>, Release>;

using UniqueBitmap = Unique<HBITMAP>;
using UniqueMemoryDc = Unique<HDC>;
using UniqueFont = Unique<HFONT>;
using UniqueImageList = Unique<HIMAGELIST>;
using UniqueMenu = Unique<HMENU>;
using UniqueModule = Unique<HMODULE>;
using UniqueHandle = Unique<HANDLE>;

}  // namespace framework
