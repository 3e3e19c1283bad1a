#pragma once

#include "platform/appkit/NSImage.h"

#include <QColor>
#include <QIcon>
#include <QImage>
#include <QSize>

namespace mirrolet::platform {

/// Renders the picture at a size in device pixels, with premultiplied alpha. A template image (see
/// NSImage::isTemplate()) is drawn in the tint. Every other picture keeps its own colours and proportions.
/// Slow for a picture of a window, because its pixels are read back from the server. Main thread.
QImage renderedImage(const NSImage& image, QSize pixels, const QColor& tint);

/// Makes an icon of the picture for Qt's controls and for the tray. The icon is sharp at every size that a
/// control or the tray uses.
QIcon toQIcon(const NSImage& image, const QColor& tint);

} // namespace mirrolet::platform
