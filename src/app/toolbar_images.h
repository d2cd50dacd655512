#pragma once

#include <windows.h>

#include "framework/handles.h"

namespace app {

// The toolbar's faces from a bitmap resource: 24-bit images of 40 x 34 pixels whose magenta ground has become
// the system's button-face colour. Null when the bitmap is missing or broken.
framework::UniqueImageList loadToolBarImages(UINT bitmapId);

}  // namespace app
