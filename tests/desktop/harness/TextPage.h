#pragma once

#include "tests/desktop/harness/XClient.h"

#include <xcb/xcb.h>

namespace mirrolet::harness {

/// Fills a drawable of depth 24 with a page of small coloured text on a dark ground, as in a terminal. That
/// is the hardest common picture to scale down. The page is the same every time, and uses the server's
/// built-in font.
void drawTextPage(XClient& client, xcb_drawable_t drawable, int width, int height);

} // namespace mirrolet::harness
