#pragma once

#include "platform/appkit/NSImage.h"

#include <QColor>
#include <QIcon>
#include <QImage>
#include <QSize>

namespace mirrolet::platform {

/// The picture at a size in device pixels, premultiplied. Templates come in the tint; everything else in its
/// own colours, its proportions kept. Main thread; a window's picture is read back from the server, which is
/// slow.
QImage renderedImage(const NSImage& image, QSize pixels, const QColor& tint);

/// The picture as the toolkit's controls and the tray take it: sharp at the sizes that they ask for.
QIcon toQIcon(const NSImage& image, const QColor& tint);

} // namespace mirrolet::platform
