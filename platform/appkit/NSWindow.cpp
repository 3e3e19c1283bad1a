#include "platform/appkit/NSWindow.h"

#include "platform/appkit/Coordinates.h"
#include "platform/appkit/NSScreen.h"
#include "platform/appkit/WindowHost.h"
#include "platform/appkit/WindowHosts.h"

#include <utility>

namespace mirrolet::platform {

NSWindow::NSWindow(NSRect contentRect, unsigned styleMask) : frameRect(contentRect), style(styleMask) {}

NSWindow::~NSWindow() = default;

std::shared_ptr<NSWindow> NSWindow::withContentViewController(const NSViewController& controller) {
    const auto view = controller.view();
    const NSSize size = view->intrinsicContentSize().value_or(view->frame().size);
    auto window = std::make_shared<NSWindow>(NSRect{{0, 0}, size}, NSWindowStyleMask::titled);
    window->setContentView(view);
    return window;
}

void NSWindow::setFrame(NSRect frame, bool /*display*/) {
    if (frame == frameRect)
        return;
    frameRect = frame;
    if (content)
        content->setFrame({{0, 0}, frame.size});
    if (host && !followsHost)
        host->setGeometry(toQtScreenRect(frame));
}

void NSWindow::setFrameOrigin(NSPoint origin) {
    frameRect.origin = origin;
    if (host)
        host->setGeometry(toQtScreenRect(frameRect));
}

void NSWindow::center() {
    if (const auto screen = NSScreen::main())
        setFrameOrigin({screen->visibleFrame.midX() - frameRect.width() / 2,
                        screen->visibleFrame.midY() - frameRect.height() / 2});
}

void NSWindow::setContentView(const std::shared_ptr<NSView>& view) {
    // The native window is destroyed, because other content may need another kind of native window. A new one
    // is made when the window is shown again.
    host.reset();
    content = view;
    if (content)
        content->setFrame({{0, 0}, frameRect.size});
}

void NSWindow::ensureHost() {
    if (!host)
        host = makeWindowHost(*this);
}

bool NSWindow::isVisible() const {
    return host && host->isVisible();
}

void NSWindow::orderFrontRegardless() {
    ensureHost();
    host->show();
}

void NSWindow::orderOut() {
    if (host)
        host->hide();
}

void NSWindow::close() {
    orderOut();
}

void NSWindow::makeKey() {
    if (host && canBecomeKeyWindow())
        host->takeFocus();
}

void NSWindow::makeKeyAndOrderFront() {
    orderFrontRegardless();
    makeKey();
}

void NSWindow::setLevel(int level) {
    windowLevel = level;
    if (host)
        host->setLevel(level);
}

void NSWindow::setTitle(const std::string& title) {
    windowTitle = title;
    if (host)
        host->setTitle(title);
}

/// Calls setFrame(), because subclasses override it to lay out their content after every change of the frame.
void NSWindow::hostMoved(NSRect frame) {
    const bool outer = std::exchange(followsHost, true);
    setFrame(frame, true);
    followsHost = outer;
}

} // namespace mirrolet::platform
