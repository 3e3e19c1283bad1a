// This part of AppDelegate starts and ends a session. It offers a window in a prompt, opens the mirror and
// closes it again.

#include "app/AppDelegate.h"
#include "platform/appkit/NSAlert.h"
#include "platform/appkit/NSWorkspace.h"
#include "platform/coregraphics/CGScreenCaptureAccess.h"
#include "platform/foundation/URL.h"

namespace mirrolet {

using namespace platform;

namespace {

/// A link to the system setting that lists the programs that may record the screen.
constexpr const char* screenRecordingLink =
    "x-apple.systempreferences:com.apple.preference.security?Privacy_ScreenCapture";

} // namespace

/// Offers the detected window in a prompt. Does nothing during a session, so a window that is detected later
/// never replaces the first one.
void AppDelegate::callDetected(const DetectedWindowInfo& info) {
    if (!activeSession)
        showPrompt(info);
}

void AppDelegate::showPrompt(const DetectedWindowInfo& info) {
    activeSession = true;
    const auto prompt = PromptPanel::make(info.ownerName, info.isLikelyCall);
    prompt->onAccept = [weak = weak_from_this(), info] {
        const auto delegate = weak.lock();
        if (!delegate)
            return;
        // Setting promptPanel to nullptr may destroy the prompt, which owns this closure and its `info`. So
        // `info` is copied first.
        const DetectedWindowInfo accepted = info; // NOLINT(performance-unnecessary-copy-initialization)
        delegate->promptPanel = nullptr;
        delegate->startSession(accepted);
    };
    prompt->onDecline = [weak = weak_from_this()] {
        const auto delegate = weak.lock();
        if (!delegate)
            return;
        delegate->promptPanel = nullptr;
        delegate->activeSession = false;
    };
    promptPanel = prompt;
    prompt->show();
}

void AppDelegate::startSession(const DetectedWindowInfo& info) {
    if (!CGPreflightScreenCaptureAccess()) {
        activeSession = false;
        showScreenRecordingAlert();
        return;
    }
    const auto controller = std::make_shared<PiPController>(info.windowID);
    controller->onClose = [weak = weak_from_this()] {
        const auto delegate = weak.lock();
        if (!delegate)
            return;
        delegate->pipController = nullptr;
        delegate->activeSession = false;
    };
    pipController = controller;
    controller->start();
}

void AppDelegate::endSession() {
    if (promptPanel)
        promptPanel->dismiss();
    promptPanel = nullptr;
    if (pipController)
        pipController->stop();
    pipController = nullptr;
    activeSession = false;
}

void AppDelegate::manualTrigger() {
    if (activeSession)
        return;
    if (const auto found = WindowMonitor::largestFrontmostWindow(WindowMonitor::currentWindows()))
        showPrompt(*found);
    else
        showNoWindowAlert();
}

void AppDelegate::handleHotkey(HotkeyID id) {
    switch (id) {
    case HotkeyID::togglePiPVisibility:
        toggleVisibility();
        break;
    case HotkeyID::pipFrontmostWindow:
        toggleFrontmost();
        break;
    }
}

void AppDelegate::toggleVisibility() {
    if (!pipController || !pipController->isRunning() || !pipController->panel)
        return;
    if (pipController->panel->isVisible())
        pipController->panel->orderOut();
    else
        pipController->panel->orderFrontRegardless();
}

void AppDelegate::toggleFrontmost() {
    if (activeSession) {
        endSession();
        return;
    }
    const auto found = WindowMonitor::largestFrontmostWindow(WindowMonitor::currentWindows());
    // No alert is shown, because the shortcut may have been pressed by mistake.
    if (!found)
        return;
    activeSession = true;
    startSession(*found);
}

void AppDelegate::showScreenRecordingAlert() {
    NSAlert alert;
    alert.messageText = "Screen Recording Access Needed";
    alert.informativeText =
        "Mirrolet needs Screen Recording permission to mirror windows into a floating PiP overlay. Grant "
        "access in "
        "System Settings > Privacy & Security > Screen Recording, then relaunch Mirrolet.";
    alert.alertStyle = NSAlert::Style::warning;
    alert.addButton("Open System Settings");
    alert.addButton("Cancel");
    if (alert.runModal() != NSAlertFirstButtonReturn)
        return;
    CGRequestScreenCaptureAccess();
    NSWorkspace::shared().open(URL(screenRecordingLink));
}

void AppDelegate::showNoWindowAlert() {
    NSAlert alert;
    alert.messageText = "No Window Found";
    alert.informativeText = "Bring the app you'd like to mirror to the front, then try again.";
    alert.alertStyle = NSAlert::Style::informational;
    alert.runModal();
}

} // namespace mirrolet
