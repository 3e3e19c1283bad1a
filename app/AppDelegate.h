#pragma once

#include "hotkeys/HotkeyManager.h"
#include "monitor/WindowMonitor.h"
#include "pip/PiPController.h"
#include "platform/appkit/NSApplication.h"
#include "platform/appkit/NSMenuItem.h"
#include "platform/appkit/NSStatusItem.h"
#include "platform/appkit/NSWindow.h"
#include "platform/combine/AnyCancellable.h"
#include "prompt/PromptPanel.h"

#include <cstdint>
#include <memory>

namespace mirrolet {

/// Owns the long-lived parts of the program, and connects detection, prompt, mirror and shortcuts. At most
/// one prompt or mirror exists at a time. Main thread only.
class AppDelegate : public platform::NSApplicationDelegate, public std::enable_shared_from_this<AppDelegate> {
  public:
    /// A shortcut as it was last registered: virtual key code and Carbon modifier mask.
    struct Shortcut {
        std::uint32_t keyCode = 0;
        std::uint32_t modifiers = 0;
        friend bool operator==(const Shortcut&, const Shortcut&) = default;
    };

    /// Creates a delegate that shows and starts nothing yet.
    static std::shared_ptr<AppDelegate> make();
    /// Releases the members one by one: first those that deliver events, then those that handle the events.
    ~AppDelegate() override;
    AppDelegate(const AppDelegate&) = delete;
    AppDelegate& operator=(const AppDelegate&) = delete;

    void applicationDidFinishLaunching() override;
    void applicationWillTerminate() override;
    void applicationShouldHandleReopen() override { showSettings(); }

    // The menu's actions.
    void toggleMonitoring();
    void manualTrigger();
    void showSettings();
    void quit();

    void handleHotkey(HotkeyID id);

    std::shared_ptr<platform::NSStatusItem> statusItem;
    std::shared_ptr<platform::NSMenuItem> monitoringMenuItem; ///< Its title shows whether monitoring is on.
    std::shared_ptr<platform::NSWindow> settingsWindow;       ///< Created on first use, then kept.
    std::shared_ptr<WindowMonitor> windowMonitor;
    std::shared_ptr<HotkeyManager> hotkeyManager;
    std::shared_ptr<PromptPanel> promptPanel; ///< Set only while a prompt is shown.
    /// The current session. Stays set after the close button has stopped the session.
    std::shared_ptr<PiPController> pipController;
    platform::AnyCancellable settingsSubscription;
    // The settings as they were last applied.
    Shortcut appliedShortcut;
    Shortcut appliedPipFrontmostShortcut;
    double appliedPollInterval = 0;
    bool appliedAlwaysOnTop = true;
    bool activeSession =
        false; ///< True from the prompt, or the start of a mirror, to the end of the session.

  private:
    AppDelegate();

    void setupStatusItem();
    [[nodiscard]] std::shared_ptr<platform::NSMenu> makeMenu();
    void wireMonitorCallbacks();
    void registerHotkeys();
    void subscribeToSettings();
    void applySettings();
    void applyShortcut(HotkeyID id, Shortcut wanted, Shortcut& applied);
    void applyAlwaysOnTop();
    void updateMonitoringTitle();

    void callDetected(const DetectedWindowInfo& info);
    void showPrompt(const DetectedWindowInfo& info);
    void startSession(const DetectedWindowInfo& info);
    void endSession();
    void toggleVisibility();
    void toggleFrontmost();
    void showScreenRecordingAlert();
    void showNoWindowAlert();
};

} // namespace mirrolet
