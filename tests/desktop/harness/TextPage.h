#pragma once

#include "tests/desktop/harness/XClient.h"

#include <xcb/xcb.h>

namespace mirrolet::harness {

/// Fills a drawable of depth 24 with small coloured text on a dark ground, as a terminal shows it. Such text
/// becomes unreadable sooner than other pictures when it is scaled down badly. Each call draws the same page,
/// in the X server's built-in font.
void drawTextPage(XClient& client, xcb_drawable_t drawable, int width, int height);

} // namespace mirrolet::harness
