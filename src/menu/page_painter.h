// Paints pages of menus.
#pragma once

#include <functional>

#include "base/rules.h"
#include "menu/menu_look.h"
#include "menu/menu_page.h"
#include "picture/picture_service.h"

namespace quorvelant {

// The picture of a scene for its thumbnail, of any size; nothing stands there where it is empty.
using ThumbnailSource = std::function<Picture(std::size_t track, std::size_t scene)>;

struct PaintedPage {
  Picture Normal;    // 720 x 480 or 576
  Picture Sublayer;  // white with black marks, of the same size
};

// Raises PictureError for a background that cannot be read.
[[nodiscard]] PaintedPage PaintPage(const MenuPage& page, PageKind kind, std::size_t track,
                                    const MenuLook& look, bool isNtsc, const ThumbnailSource& thumbnails,
                                    PictureService& pictures, const Rules& rules);

// The page as a viewer sees it while one of its buttons (from 0) is chosen, with the lines within which every
// screen shows it.
[[nodiscard]] Picture PreviewPage(const PaintedPage& painted, const MenuPage& page, std::size_t button,
                                  const MenuLook& look);

}  // namespace quorvelant
