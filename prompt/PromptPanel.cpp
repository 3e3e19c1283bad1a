#include "prompt/PromptPanel.h"

#include "platform/appkit/NSScreen.h"
#include "platform/dispatch/DispatchQueue.h"
#include "platform/swiftui/NSHostingView.h"
#include "prompt/PromptContentView.h"
#include "settings/SettingsStore.h"

namespace mirrolet {

using namespace platform;

namespace {
constexpr NSRect contentRect{{0, 0}, {360, 160}};
}

PromptPanel::PromptPanel() : NSPanel(contentRect, NSWindowStyleMask::nonactivatingPanel) {}

std::shared_ptr<PromptPanel> PromptPanel::make(const std::string& ownerName, bool isLikelyCall) {
    std::shared_ptr<PromptPanel> panel(new PromptPanel);
    panel->configure();
    panel->setContent(ownerName, isLikelyCall);
    panel->place();
    return panel;
}

void PromptPanel::configure() {
    isFloatingPanel = true;
    setLevel(NSWindowLevel::modalPanel);
    collectionBehavior =
        NSWindowCollectionBehavior::canJoinAllSpaces | NSWindowCollectionBehavior::fullScreenAuxiliary;
    isMovableByWindowBackground = false;
    hasShadow = true;
    isOpaque = false;
    backgroundColor = NSColor::clear();
    isReleasedWhenClosed = false;
}

void PromptPanel::setContent(const std::string& ownerName, bool isLikelyCall) {
    const auto answer = [weak = weak_from_this()](bool accepted) {
        if (const auto window = weak.lock())
            static_cast<PromptPanel&>(*window).respond(accepted);
    };
    const PromptContentView view{ownerName, isLikelyCall, [answer] { answer(true); },
                                 [answer] { answer(false); }};
    const auto hosting = std::make_shared<NSHostingView>(view);
    hosting->setFrame(contentRect);
    setContentView(hosting);
}

void PromptPanel::place() {
    const auto screen = NSScreen::main();
    if (!screen)
        return;
    // The panel is a little above the middle, where people look first.
    const NSRect visible = screen->visibleFrame;
    setFrameOrigin({visible.midX() - contentRect.width() / 2,
                    visible.midY() - contentRect.height() / 2 + 0.1 * visible.height()});
}

void PromptPanel::show() {
    didRespond = false;
    orderFrontRegardless();
    makeKey();
    if (autoDismissTimer)
        autoDismissTimer->invalidate();
    const double seconds = SettingsStore::shared().promptTimeout();
    autoDismissTimer = NSTimer::scheduledTimer(seconds, [weak = weak_from_this()] {
        if (const auto window = weak.lock())
            static_cast<PromptPanel&>(*window).respond(false);
    });
}

void PromptPanel::respond(bool accepted) {
    if (didRespond)
        return;
    didRespond = true;
    disarm();
    orderOut();
    close();
    // In the callback below the owner may drop its pointer to this panel, while the button that was pressed
    // still runs its own code. The posted task keeps the panel alive until the next turn of the main loop.
    DispatchQueue::main().async([self = shared_from_this()] { (void)self; });
    if (const auto& answered = accepted ? onAccept : onDecline) {
        // The callback is copied, because the owner may replace the member while the callback runs.
        const auto callback = answered;
        callback();
    }
}

void PromptPanel::dismiss() {
    disarm();
    orderOut();
    close();
}

void PromptPanel::disarm() {
    if (autoDismissTimer)
        autoDismissTimer->invalidate();
    autoDismissTimer = nullptr;
}

} // namespace mirrolet
