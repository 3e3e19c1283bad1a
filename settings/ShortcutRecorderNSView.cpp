#include "settings/ShortcutRecorderNSView.h"

#include "hotkeys/HotkeyManager.h"
#include "platform/appkit/NSBezierPath.h"
#include "platform/appkit/NSColor.h"
#include "platform/appkit/NSFont.h"
#include "platform/appkit/NSSound.h"
#include "settings/ShortcutNames.h"

namespace mirrolet {

using namespace platform;

namespace {
constexpr std::uint16_t escapeKeyCode = 53;
constexpr auto recordingText = "Press shortcut…";
} // namespace

ShortcutRecorderNSView::~ShortcutRecorderNSView() {
    PopSymbolicHotKeyMode(hotKeysOff);
}

void ShortcutRecorderNSView::setCurrentShortcut(Shortcut shortcut) {
    currentShortcut = shortcut;
    toolTip = shortcutSpokenString(shortcut.first, shortcut.second);
    showState();
}

void ShortcutRecorderNSView::showState() {
    accessibilityValue = isRecording ? recordingText : toolTip;
    setNeedsDisplay();
}

void ShortcutRecorderNSView::setRecording(bool on) {
    isRecording = on;
    PopSymbolicHotKeyMode(std::exchange(hotKeysOff, nullptr));
    if (on)
        hotKeysOff = PushSymbolicHotKeyMode(kHIHotKeyModeAllDisabled);
    showState();
}

void ShortcutRecorderNSView::endRecording() {
    setRecording(false);
    makeFirstResponder(nullptr);
}

void ShortcutRecorderNSView::mouseDown(const NSEvent& /*event*/) {
    if (isRecording) {
        endRecording();
        return;
    }
    makeFirstResponder(this);
    setRecording(true);
}

void ShortcutRecorderNSView::keyDown(const NSEvent& event) {
    if (!isRecording) {
        NSView::keyDown(event);
        return;
    }
    // A repeated event comes from a key that is still held down, so the user has not pressed a new key.
    if (event.isARepeat)
        return;
    if (event.keyCode == escapeKeyCode) {
        endRecording();
        return;
    }
    const std::uint32_t modifiers = carbonModifiers(event.modifierFlags);
    if (modifiers == 0) {
        NSSound::beep();
        return;
    }
    endRecording();
    if (onShortcutRecorded)
        onShortcutRecorded(event.keyCode, modifiers);
}

bool ShortcutRecorderNSView::resignFirstResponder() {
    setRecording(false);
    return NSView::resignFirstResponder();
}

void ShortcutRecorderNSView::draw(NSRect /*dirtyRect*/) {
    drawBackground();
    drawLabel();
}

void ShortcutRecorderNSView::drawBackground() const {
    const NSRect inner{{0.5, 0.5}, {bounds().width() - 1, bounds().height() - 1}};
    const auto shape = NSBezierPath::roundedRect(inner, 6, 6);
    if (isRecording)
        NSColor::controlAccentColor().withAlphaComponent(0.15).setFill();
    else
        NSColor::controlBackgroundColor().setFill();
    shape.fill();
    if (isRecording)
        NSColor::controlAccentColor().setStroke();
    else
        NSColor::separatorColor().setStroke();
    shape.stroke();
}

void ShortcutRecorderNSView::drawLabel() const {
    const std::string text =
        isRecording ? recordingText : shortcutDisplayString(currentShortcut.first, currentShortcut.second);
    const NSTextAttributes attributes{NSFont::systemFont(NSFont::systemFontSize()),
                                      isRecording ? NSColor::secondaryLabelColor() : NSColor::labelColor()};
    const NSSize size = sizeOfText(text, attributes);
    drawText(text, {bounds().midX() - size.width / 2, bounds().midY() - size.height / 2}, attributes);
}

} // namespace mirrolet
