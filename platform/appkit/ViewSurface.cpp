#include "platform/appkit/ViewSurface.h"

#include "platform/appkit/Coordinates.h"
#include "platform/appkit/NSImageView.h"
#include "platform/appkit/ViewTree.h"
#include "platform/desktop/Desktop.h"

#include <QBackingStore>
#include <QImage>
#include <QPainter>
#include <QWindow>

#include <cstddef>
#include <utility>
#include <vector>

namespace mirrolet::platform {

ViewSurface::ViewSurface(QWindow& shownIn, const ViewTree& shownTree) : window(shownIn), tree(shownTree) {}

ViewSurface::~ViewSurface() = default;

void ViewSurface::open(std::uint32_t background) {
    const auto number = static_cast<desktop::WindowNumber>(window.winId());
    presenter = desktop::Desktop::current().makePresenter(number);
    if (presenter)
        presenter->setBackground(background);
    presentedSize = {};
}

void ViewSurface::close() {
    presenter.reset();
    backingStore.reset();
}

void ViewSurface::contentChanged() {
    overlayDirty = pictureDirty = true;
    schedule();
}

void ViewSurface::pictureChanged() {
    pictureDirty = true;
    // The picture is drawn at once. A separate turn of the event loop would cost as much as the drawing.
    draw();
}

void ViewSurface::schedule() {
    if (std::exchange(scheduled, true))
        return;
    QMetaObject::invokeMethod(
        &window,
        [this] {
            scheduled = false;
            draw();
        },
        Qt::QueuedConnection);
}

void ViewSurface::draw() {
    // A hidden window is not drawn now. When the window is shown again, an expose event draws it.
    if (!window.isExposed())
        return;
    if (presenter)
        drawPresented();
    else if (overlayDirty || pictureDirty)
        drawByQt();
    overlayDirty = pictureDirty = false;
}

void ViewSurface::repair() {
    if (!presenter)
        return;
    const auto size = pixelSize();
    presenter->repair({0, 0, size.width, size.height});
}

void ViewSurface::leavePicture() {
    pictureDirty = true;
    if (presenter && presentedSize != desktop::PixelSize{})
        presenter->setPicture(nullptr, {});
}

void ViewSurface::drawPresented() {
    const auto size = pixelSize();
    if (size != std::exchange(presentedSize, size)) {
        presenter->resize(size, cornerRadius());
        overlayDirty = pictureDirty = true;
    }
    if (overlayDirty)
        presenter->setOverlay(renderOverlay());
    if (pictureDirty)
        setPicture();
    presenter->present();
}

void ViewSurface::setPicture() {
    if (const auto* view = tree.pictureView())
        presenter->setPicture(view->image()->windowImage(), pictureTarget(*view));
    else
        presenter->setPicture(nullptr, {});
}

void ViewSurface::drawByQt() {
    if (!backingStore)
        backingStore = std::make_unique<QBackingStore>(&window);
    backingStore->resize(window.size());
    const QRect all(QPoint(0, 0), window.size());
    backingStore->beginPaint(all);
    {
        QPainter painter(backingStore->paintDevice());
        painter.setCompositionMode(QPainter::CompositionMode_Source);
        painter.fillRect(all, Qt::transparent);
        painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
        tree.paint(painter);
    }
    backingStore->endPaint();
    backingStore->flush(all);
}

desktop::PixelSize ViewSurface::pixelSize() const {
    return toPixels(window.size(), window.devicePixelRatio());
}

double ViewSurface::cornerRadius() const {
    return tree.root() ? tree.root()->layer().cornerRadius * window.devicePixelRatio() : 0;
}

desktop::Bitmap ViewSurface::renderOverlay() const {
    const auto size = pixelSize();
    desktop::Bitmap overlay{size,
                            std::vector<std::uint32_t>(static_cast<std::size_t>(size.width) * size.height)};
    QImage image(reinterpret_cast<uchar*>(overlay.pixels.data()), size.width, size.height,
                 qsizetype{4} * size.width, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(window.devicePixelRatio());
    QPainter painter(&image);
    tree.paint(painter, PaintedParts::overlay);
    return overlay;
}

desktop::PixelRect ViewSurface::pictureTarget(const NSImageView& view) const {
    return toPixels(view.convertToWindow(view.imageRect()), tree.root()->frame().height(),
                    window.devicePixelRatio());
}

} // namespace mirrolet::platform
