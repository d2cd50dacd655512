#include "app/toolbar_images.h"

#include <cstdint>
#include <span>

#include "framework/resources.h"

namespace app {
namespace {

constexpr int faceWidth = 40;
constexpr int faceHeight = 34;
constexpr int initialSize = 5;

void repaintMagenta(std::span<std::uint8_t> row, COLORREF color) {
  for (std::size_t x = 0; x + 3 <= row.size(); x += 3) {
    if (row[x] != 0xFF || row[x + 1] != 0x00 || row[x + 2] != 0xFF) continue;
    row[x] = GetBValue(color);
    row[x + 1] = GetGValue(color);
    row[x + 2] = GetRValue(color);
  }
}

}  // namespace

framework::UniqueImageList loadToolBarImages(UINT bitmapId) {
  const framework::UniqueBitmap bitmap(
      static_cast<HBITMAP>(LoadImageW(framework::moduleWithResource(RT_BITMAP, bitmapId),
                                      MAKEINTRESOURCEW(bitmapId), IMAGE_BITMAP, 0, 0, LR_CREATEDIBSECTION)));
  DIBSECTION section{};
  if (!bitmap || GetObjectW(bitmap.get(), sizeof section, &section) != sizeof section) return nullptr;
  const BITMAP& pixels = section.dsBm;
  if (pixels.bmBitsPixel != 24 || !pixels.bmBits) return nullptr;

  auto* const bytes = static_cast<std::uint8_t*>(pixels.bmBits);
  const auto stride = static_cast<std::size_t>(pixels.bmWidthBytes);
  for (std::size_t y = 0; y < static_cast<std::size_t>(pixels.bmHeight); ++y)
    repaintMagenta({bytes + y * stride, 3 * static_cast<std::size_t>(pixels.bmWidth)},
                   GetSysColor(COLOR_BTNFACE));

  framework::UniqueImageList list(ImageList_Create(faceWidth, faceHeight, ILC_COLOR24, initialSize, 1));
  if (!list || ImageList_Add(list.get(), bitmap.get(), nullptr) < 0) return nullptr;
  return list;
}

}  // namespace app
