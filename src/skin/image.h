#pragma once

#include <windows.h>

#include <memory>
#include <string>

#include "framework/handles.h"
#include "skin/pixels.h"

namespace Gdiplus {
class Bitmap;
}

namespace skin {

// GDI+ is up while at least one of these lives; images are loaded and used only then.
class GdiplusSession {
 public:
  GdiplusSession();
  ~GdiplusSession();
  GdiplusSession(const GdiplusSession&) = delete;
  GdiplusSession& operator=(const GdiplusSession&) = delete;

 private:
  ULONG_PTR token_ = 0;
};

// An image of the skin in any format that GDI+ reads. The file is read once and not kept open.
class CImage {
 public:
  // path in UTF-8. A missing or broken file gives an image that is not loaded.
  explicit CImage(const std::string& path);
  virtual ~CImage();
  CImage(const CImage&) = delete;
  CImage& operator=(const CImage&) = delete;

  bool loaded() const { return bitmap_ != nullptr; }
  SIZE size() const;
  // A device-dependent bitmap of the image's size, laid over the background; null when that fails.
  framework::UniqueBitmap toBitmap(COLORREF background) const;
  // The same, scaled to `size` pixels when the image has another size.
  framework::UniqueBitmap toBitmap(COLORREF background, SIZE size) const;
  // The image with its transparency, for drawing without GDI+; empty when that fails.
  Pixels pixels() const;

 private:
  std::unique_ptr<Gdiplus::Bitmap> bitmap_;
};

}  // namespace skin
