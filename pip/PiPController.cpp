#include "pip/PiPController.h"

#include "platform/appkit/NSScreen.h"
#include "settings/SettingsStore.h"

#include <utility>

namespace mirrolet {

using namespace platform;

namespace {

constexpr const char* captureQueueLabel = "app.mirrolet.Mirrolet.pipCapture";
constexpr double framesPerSecond = 15;
constexpr CGFloat initialSide = 100;
constexpr CGFloat screenMargin = 24;

} // namespace

PiPController::PiPController(CGWindowID window)
    : windowID(window), captureQueue(captureQueueLabel, DispatchQoS::userInteractive) {}

NSRect PiPController::initialFrame(PiPCorner corner) {
    const auto screen = NSScreen::main();
    if (!screen)
        return {{0, 0}, {initialSide, initialSide}};
    const NSRect visible = screen->visibleFrame;
    const bool right = corner == PiPCorner::bottomRight || corner == PiPCorner::topRight;
    const bool top = corner == PiPCorner::topRight || corner == PiPCorner::topLeft;
    return {{right ? visible.maxX() - initialSide - screenMargin : visible.minX() + screenMargin,
             top ? visible.maxY() - initialSide - screenMargin : visible.minY() + screenMargin},
            {initialSide, initialSide}};
}

void PiPController::start() {
    if (running)
        return;
    running = true;
    showPanel();
    startTimer();
}

void PiPController::showPanel() {
    auto& store = SettingsStore::shared();
    const auto shown = PiPPanel::make(initialFrame(store.pipCorner()));
    shown->setLevel(store.pipAlwaysOnTop() ? NSWindowLevel::floating : NSWindowLevel::normal);
    // The close button stops the session without calling onClose, which reports only that the source window
    // is gone. The owner keeps the stopped session as the current one, because the user has just closed this
    // mirror and must not be offered the same call again.
    shown->onCloseRequested = [weak = weak_from_this()] {
        if (const auto controller = weak.lock())
            controller->stop();
    };
    shown->orderFrontRegardless();
    panel = shown;
}

void PiPController::startTimer() {
    timer = DispatchSourceTimer::make(captureQueue);
    timer->scheduleNow(1 / framesPerSecond);
    FrameDelivery delivery([weak = weak_from_this()](const CGImageRef& image) {
        if (const auto controller = weak.lock())
            controller->deliver(image);
    });
    // The timer goes on until the main queue hears of a failure. Another capture could take seconds.
    timer->setEventHandler([weak = weak_from_this(), delivery, failed = false]() mutable {
        if (const auto controller = failed ? nullptr : weak.lock())
            failed = !controller->captureFrame(delivery);
    });
    timer->resume();
}

/// Captures the source window once. Returns false if that failed, which ends the mirror. Runs on the capture
/// queue, so it reads no member of the controller except `windowID`, which never changes.
bool PiPController::captureFrame(FrameDelivery& delivery) {
    const auto image =
        CGWindowListCreateImage(CGRectNull, kCGWindowListOptionIncludingWindow, windowID,
                                kCGWindowImageBoundsIgnoreFraming | kCGWindowImageBestResolution);
    if (image)
        delivery.post(image);
    else
        handleCaptureFailure();
    return image != nullptr;
}

void PiPController::deliver(const CGImageRef& image) {
    // The panel is gone if the session was stopped after this image was posted.
    if (!panel)
        return;
    const NSSize size{CGFloat(CGImageGetWidth(*image)), CGFloat(CGImageGetHeight(*image))};
    panel->imageView->setImage(std::make_shared<NSImage>(image, size));
}

void PiPController::handleCaptureFailure() {
    DispatchQueue::main().async([weak = weak_from_this()] {
        const auto controller = weak.lock();
        if (!controller || !controller->running)
            return;
        controller->stop();
        if (controller->onClose)
            controller->onClose();
    });
}

void PiPController::stop() {
    if (!running)
        return;
    running = false;
    if (timer)
        timer->cancel();
    timer = nullptr;
    DispatchQueue::main().async([closing = std::exchange(panel, nullptr)] {
        if (!closing)
            return;
        closing->orderOut();
        closing->close();
    });
}

} // namespace mirrolet
