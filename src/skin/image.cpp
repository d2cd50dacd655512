#include "skin/image.h"

#include <objidl.h>

#include <gdiplus.h>
#include <shlwapi.h>

#include "framework/files.h"

namespace skin {
namespace {

Gdiplus::Color colorOf(COLORREF color) {
  return {255, GetRValue(color), GetGValue(color), GetBValue(color)};
}

}  // namespace

GdiplusSession::GdiplusSession() {
  const Gdiplus::GdiplusStartupInput input;  // version 1, no callback, background thread as usual
  Gdiplus::GdiplusStartup(&token_, &input, nullptr);
}

GdiplusSession::~GdiplusSession() {
  if (token_) Gdiplus::GdiplusShutdown(token_);
}

CImage::CImage(const std::string& path) {
  std::string bytes;
  if (!framework::readFile(path, bytes) || bytes.empty()) return;
  IStream* const stream =
      SHCreateMemStream(reinterpret_cast<const BYTE*>(bytes.data()), static_cast<UINT>(bytes.size()));
  if (!stream) return;
  auto bitmap = std::make_unique<Gdiplus::Bitmap>(stream);
  stream->Release();  // the bitmap holds on to it for as long as it needs
  if (bitmap->GetLastStatus() == Gdiplus::Ok && bitmap->GetWidth() > 0) bitmap_ = std::move(bitmap);
}

CImage::~CImage() = default;

SIZE CImage::size() const {
  if (!loaded()) return {};
  return {static_cast<LONG>(bitmap_->GetWidth()), static_cast<LONG>(bitmap_->GetHeight())};
}

framework::UniqueBitmap CImage::toBitmap(COLORREF background) const {
  HBITMAP made = nullptr;
  if (loaded()) bitmap_->GetHBITMAP(colorOf(background), &made);
  return framework::UniqueBitmap(made);
}

framework::UniqueBitmap CImage::toBitmap(COLORREF background, SIZE wanted) const {
  if (!loaded()) return nullptr;
  if (size().cx == wanted.cx && size().cy == wanted.cy) return toBitmap(background);
  Gdiplus::Bitmap scaled(wanted.cx, wanted.cy, PixelFormat32bppARGB);
  Gdiplus::Graphics graphics(&scaled);
  graphics.SetInterpolationMode(Gdiplus::InterpolationModeHighQualityBicubic);
  graphics.DrawImage(bitmap_.get(), 0, 0, static_cast<INT>(wanted.cx), static_cast<INT>(wanted.cy));
  HBITMAP made = nullptr;
  scaled.GetHBITMAP(colorOf(background), &made);
  return framework::UniqueBitmap(made);
}

Pixels CImage::pixels() const {
  if (!loaded()) return {};
  Pixels copy(static_cast<int>(size().cx), static_cast<int>(size().cy));
  const Gdiplus::Rect all(0, 0, copy.width, copy.height);
  Gdiplus::BitmapData data;
  data.Width = static_cast<UINT>(copy.width);
  data.Height = static_cast<UINT>(copy.height);
  data.Stride = copy.width * 4;
  data.PixelFormat = PixelFormat32bppARGB;
  data.Scan0 = copy.values.data();
  data.Reserved = 0;
  const UINT mode = Gdiplus::ImageLockModeRead | Gdiplus::ImageLockModeUserInputBuf;
  if (bitmap_->LockBits(&all, mode, PixelFormat32bppARGB, &data) != Gdiplus::Ok) return {};
  bitmap_->UnlockBits(&data);
  return copy;
}

}  // namespace skin
