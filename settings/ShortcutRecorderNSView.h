#pragma once

#include "platform/appkit/NSView.h"
#include "platform/carbon/CarbonEvents.h"

#include <cstdint>
#include <functional>
#include <utility>

namespace mirrolet {

/// Shows a shortcut and records a new one. A click starts the recording, and the next key with a modifier
/// becomes the new shortcut. Escape, a second click, a click elsewhere in the window and the loss of the
/// focus cancel the recording. During the recording the program's own hot keys are off, so that their
/// combinations can be recorded too.
class ShortcutRecorderNSView : public platform::NSView {
  public:
    /// A virtual key code and a Carbon modifier mask.
    using Shortcut = std::pair<std::uint32_t, std::uint32_t>;

    ShortcutRecorderNSView() = default;
    explicit ShortcutRecorderNSView(platform::NSRect frame) : NSView(frame) {}
    ~ShortcutRecorderNSView() override;

    /// Called when a shortcut was recorded, after the recording has ended.
    std::function<void(std::uint32_t keyCode, std::uint32_t modifiers)> onShortcutRecorded;

    void setCurrentShortcut(Shortcut shortcut);
    [[nodiscard]] Shortcut shortcut() const { return currentShortcut; }
    [[nodiscard]] bool recording() const { return isRecording; }

    [[nodiscard]] bool acceptsFirstResponder() const override { return true; }
    [[nodiscard]] std::optional<platform::NSSize> intrinsicContentSize() const override {
        return platform::NSSize{130, 24};
    }

    void mouseDown(const platform::NSEvent& event) override;
    void keyDown(const platform::NSEvent& event) override;
    bool resignFirstResponder() override;
    void draw(platform::NSRect dirtyRect) override;

  private:
    void setRecording(bool on);
    void showState();
    void endRecording();
    void drawBackground() const;
    void drawLabel() const;

    Shortcut currentShortcut{0, 0};
    bool isRecording = false;
    platform::HotKeyModeRef hotKeysOff = nullptr; ///< Keeps the hot keys off. Set only while recording.
};

} // namespace mirrolet
