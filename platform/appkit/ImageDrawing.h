#pragma once

#include "platform/appkit/NSImage.h"

#include <QColor>
#include <QIcon>
#include <QImage>
#include <QSize>

namespace mirrolet::platform {

/// The picture at a size in device pixels, premultiplied. Templates come in the tint; everything else in its
/// own colours, its proportions kept. Slow for a window's picture, which is read back from the server. Main
/// thread.
QImage renderedImage(const NSImage& image, QSize pixels, const QColor& tint);

/// The picture for Qt's controls and for the tray, sharp at the sizes that they ask for.
QIcon toQIcon(const NSImage& image, const QColor& tint);

} // namespace mirrolet::platform
