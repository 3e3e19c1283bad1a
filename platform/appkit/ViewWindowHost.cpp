#include "platform/appkit/ViewWindowHost.h"

#include "platform/appkit/NSImageView.h"
#include "platform/appkit/NSPanel.h"
#include "platform/desktop/Desktop.h"

#include <QBackingStore>
#include <QExposeEvent>
#include <QImage>
#include <QMouseEvent>
#include <QPainter>
#include <QSurfaceFormat>
#include <QWindow>

#include <algorithm>
#include <cmath>
#include <utility>

namespace mirrolet::platform {

namespace {

desktop::PanelStacking stackingOf(int level) {
    return level > NSWindowLevel::normal ? desktop::PanelStacking::floating
                                         : desktop::PanelStacking::amongNormal;
}

/// A floating window is out of the window manager's hands: many managers keep what they manage below the
/// full-screen windows of other programs.
Qt::WindowFlags windowFlags(desktop::PanelStacking stacking) {
    const Qt::WindowFlags flags = Qt::Tool | Qt::FramelessWindowHint | Qt::WindowDoesNotAcceptFocus;
    return stacking == desktop::PanelStacking::floating ? flags | Qt::BypassWindowManagerHint : flags;
}

std::uint32_t toArgb(const NSColor& colour) {
    const auto part = [](double value, int shift) {
        return static_cast<std::uint32_t>(std::lround(value * 255)) << shift;
    };
    return part(1, 24) | part(colour.red, 16) | part(colour.green, 8) | part(colour.blue, 0);
}

} // namespace

class ViewWindowHost::Window final : public QWindow {
  public:
    explicit Window(ViewWindowHost& windowHost) : host(windowHost) {
        QSurfaceFormat format;
        format.setAlphaBufferSize(8);
        setFormat(format);
        setSurfaceType(QSurface::RasterSurface);
    }

  protected:
    void exposeEvent(QExposeEvent* /*event*/) override { host.exposed(); }
    void resizeEvent(QResizeEvent* /*event*/) override { host.resized(); }
    void moveEvent(QMoveEvent* /*event*/) override { host.takeGeometry(); }

    void mousePressEvent(QMouseEvent* event) override {
        if (event->button() == Qt::LeftButton)
            host.tree.mousePressed(event->position(), event->globalPosition());
    }
    void mouseMoveEvent(QMouseEvent* event) override {
        host.tree.mouseMoved(event->position(), event->globalPosition(), event->buttons() & Qt::LeftButton);
    }
    void mouseReleaseEvent(QMouseEvent* event) override {
        if (event->button() != Qt::LeftButton)
            return;
        host.tree.mouseReleased(event->position(), event->globalPosition());
        host.takeGeometry();
    }

    bool event(QEvent* event) override {
        if (event->type() == QEvent::Enter) {
            const auto* enter = static_cast<QEnterEvent*>(event);
            host.tree.pointerEntered(enter->position(), enter->globalPosition());
        } else if (event->type() == QEvent::Leave) {
            host.tree.pointerLeft();
        }
        return QWindow::event(event);
    }

  private:
    ViewWindowHost& host;
};

ViewWindowHost::ViewWindowHost(NSWindow& nsWindow)
    : WindowHost(nsWindow), tree({
                                [this] {
                                    overlayDirty = pictureDirty = true;
                                    scheduleDrawing();
                                },
                                [this] {
                                    // At once: a turn of the loop of its own would cost as much as the
                                    // showing.
                                    pictureDirty = true;
                                    draw();
                                },
                                [this](NSCursor cursor) { setCursor(cursor); },
                                nullptr,
                            }),
      window(std::make_unique<Window>(*this)), stacking(stackingOf(nsWindow.level())) {
    tree.setRoot(nsWindow.contentView());
    window->setTitle(QString::fromStdString(nsWindow.title()));
    window->setGeometry(toQtScreenRect(nsWindow.frame()));
}

ViewWindowHost::~ViewWindowHost() {
    destroyNative();
}

void ViewWindowHost::createNative() {
    if (window->handle())
        return;
    window->setFlags(windowFlags(stacking));
    window->setProperty("_q_showWithoutActivating", true);
    window->create();
    awaitToolkit();
    const auto number = static_cast<desktop::WindowNumber>(window->winId());
    panel = desktop::Desktop::current().makePanelWindow(number, stacking);
    panel->setLevel(owner.level());
    panel->setShadow(shadow(window->devicePixelRatio()));
    presenter = desktop::Desktop::current().makePresenter(number);
    if (presenter)
        presenter->setBackground(
            toArgb(tree.root() ? tree.root()->layer().backgroundColor.value_or(owner.backgroundColor)
                               : owner.backgroundColor));
    presentedSize = {};
}

void ViewWindowHost::destroyNative() {
    presenter.reset();
    panel.reset();
    backingStore.reset();
    window->destroy();
}

void ViewWindowHost::setGeometry(const QRect& geometry) {
    window->setGeometry(geometry);
    cutCorners(); // Now, not when the server's answer comes: what is outside of the shape takes no clicks.
    scheduleDrawing();
}

void ViewWindowHost::cutCorners() {
    if (panel)
        panel->setCorners(pixelSize(), cornerRadius());
}

void ViewWindowHost::setTitle(const std::string& title) {
    window->setTitle(QString::fromStdString(title));
}

void ViewWindowHost::setLevel(int level) {
    const auto wanted = stackingOf(level);
    if (wanted == std::exchange(stacking, wanted)) {
        if (panel)
            panel->setLevel(level);
        return;
    }
    // In and out of the window manager's hands: a window that changes sides while it is mapped confuses
    // managers, a new native window does not.
    if (!window->handle())
        return;
    const bool visible = window->isVisible();
    destroyNative();
    tree.pressLost();
    if (visible)
        show();
}

void ViewWindowHost::show() {
    createNative();
    if (!window->isVisible()) {
        announceShown = true;
        shownAt = toQtScreenRect(owner.frame());
        window->setGeometry(shownAt);
        cutCorners();
        awaitToolkit();
        panel->willShow();
        window->setVisible(true);
    } else {
        panel->didShow(); // To the front again.
    }
}

void ViewWindowHost::hide() {
    if (!window->isVisible())
        return;
    if (panel) {
        awaitToolkit();
        panel->willHide();
    }
    window->setVisible(false);
    if (panel)
        panel->didHide();
    tree.pressLost(); // The server tells a hidden window of no release.
    tree.pointerLeft();
}

void ViewWindowHost::takeFocus() {
    focusWanted = announceShown;
    if (!focusWanted && panel)
        panel->takeFocus();
}

QRect ViewWindowHost::geometry() const {
    return window->geometry();
}

bool ViewWindowHost::isVisible() const {
    return window->isVisible();
}

/// What is not seen, as the window is hidden or out of sight, is not to be drawn: a presenter goes on with a
/// picture that changes.
void ViewWindowHost::leavePicture() {
    pictureDirty = true;
    if (presenter && presentedSize != desktop::PixelSize{})
        presenter->setPicture(nullptr, {});
}

void ViewWindowHost::exposed() {
    if (!window->isExposed())
        return leavePicture();
    if (!panel)
        return;
    if (std::exchange(announceShown, false)) {
        panel->didShow();
        if (stacking == desktop::PanelStacking::amongNormal)
            window->setGeometry(shownAt); // i3 moves what it maps by the height of a title, each time.
        if (std::exchange(focusWanted, false))
            panel->takeFocus();
    }
    draw();
    if (presenter) {
        const auto size = pixelSize();
        presenter->repair({0, 0, size.width, size.height});
    }
}

void ViewWindowHost::resized() {
    takeGeometry();
    cutCorners();
    draw();
}

/// Takes over where the window manager has put the window. A floating window is moved by nobody but us. In
/// the middle of a drag the server's reports are behind, so the place is taken over at the release.
void ViewWindowHost::takeGeometry() {
    if (stacking == desktop::PanelStacking::amongNormal && !tree.isPressed())
        moved(window->geometry());
}

void ViewWindowHost::scheduleDrawing() {
    if (std::exchange(drawingScheduled, true))
        return;
    QMetaObject::invokeMethod(
        window.get(),
        [this] {
            drawingScheduled = false;
            draw();
        },
        Qt::QueuedConnection);
}

void ViewWindowHost::draw() {
    if (!window->isExposed())
        return; // The expose event that follows the next showing draws it.
    if (presenter)
        drawPresented();
    else if (overlayDirty || pictureDirty)
        drawByToolkit();
    overlayDirty = pictureDirty = false;
}

void ViewWindowHost::drawPresented() {
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

void ViewWindowHost::setPicture() {
    if (const auto* view = tree.pictureView())
        presenter->setPicture(view->image()->windowImage(), pictureTarget(*view));
    else
        presenter->setPicture(nullptr, {});
}

void ViewWindowHost::drawByToolkit() {
    if (!backingStore)
        backingStore = std::make_unique<QBackingStore>(window.get());
    backingStore->resize(window->size());
    const QRect all(QPoint(0, 0), window->size());
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

desktop::PixelSize ViewWindowHost::pixelSize() const {
    const double scale = window->devicePixelRatio();
    return {static_cast<int>(std::lround(window->width() * scale)),
            static_cast<int>(std::lround(window->height() * scale))};
}

double ViewWindowHost::cornerRadius() const {
    return tree.root() ? tree.root()->layer().cornerRadius * window->devicePixelRatio() : 0;
}

desktop::Bitmap ViewWindowHost::renderOverlay() const {
    const auto size = pixelSize();
    desktop::Bitmap overlay{size,
                            std::vector<std::uint32_t>(static_cast<std::size_t>(size.width) * size.height)};
    QImage image(reinterpret_cast<uchar*>(overlay.pixels.data()), size.width, size.height,
                 qsizetype{4} * size.width, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(window->devicePixelRatio());
    QPainter painter(&image);
    const_cast<ViewTree&>(tree).paintOverlay(painter);
    return overlay;
}

/// Rounded outwards to whole pixels on neither side: the edges of the picture are sharp.
desktop::PixelRect ViewWindowHost::pictureTarget(const NSImageView& view) const {
    const double scale = window->devicePixelRatio();
    NSRect rect = view.imageRect();
    for (const NSView* at = &view; at; at = at->superview()) {
        rect.origin.x += at->frame().minX();
        rect.origin.y += at->frame().minY();
    }
    const double top = tree.root()->frame().height() - rect.maxY();
    const int left = static_cast<int>(std::lround(rect.minX() * scale));
    const int upper = static_cast<int>(std::lround(top * scale));
    const int right = static_cast<int>(std::lround(rect.maxX() * scale));
    const int lower = static_cast<int>(std::lround((top + rect.height()) * scale));
    return {left, upper, std::max(right - left, 1), std::max(lower - upper, 1)};
}

void ViewWindowHost::setCursor(NSCursor cursor) {
    if (cursor == NSCursor::crosshair)
        window->setCursor(Qt::CrossCursor);
    else
        window->unsetCursor();
}

} // namespace mirrolet::platform
