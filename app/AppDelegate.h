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
    /// A shortcut: a virtual key code and a Carbon modifier mask (see platform/carbon/CarbonEvents.h).
    struct Shortcut {
        std::uint32_t keyCode = 0;
        std::uint32_t modifiers = 0;
        friend bool operator==(const Shortcut&, const Shortcut&) = default;
    };

    /// Creates a delegate. The delegate does nothing until applicationDidFinishLaunching() is called.
    static std::shared_ptr<AppDelegate> make();
    /// Destroys the members one by one. Members that deliver events go first, so that no event reaches a
    /// member that is destroyed already.
    ~AppDelegate() override;
    AppDelegate(const AppDelegate&) = delete;
    AppDelegate& operator=(const AppDelegate&) = delete;

    void applicationDidFinishLaunching() override;
    void applicationWillTerminate() override;
    void applicationShouldHandleReopen() override { showSettings(); }

    // The entries of the menu call these functions.
    void toggleMonitoring();
    void manualTrigger();
    void showSettings();
    void quit();

    void handleHotkey(HotkeyID id);

    std::shared_ptr<platform::NSStatusItem> statusItem;
    std::shared_ptr<platform::NSMenuItem> monitoringMenuItem; ///< The title shows whether monitoring is on.
    std::shared_ptr<platform::NSWindow> settingsWindow;       ///< Created on first use, then kept.
    std::shared_ptr<WindowMonitor> windowMonitor;
    std::shared_ptr<HotkeyManager> hotkeyManager;
    std::shared_ptr<PromptPanel> promptPanel; ///< Set only while a prompt is shown.
    /// The controller of the current session. The close button stops the controller, but the session stays
    /// the current one, so that the same video call is not offered again.
    std::shared_ptr<PiPController> pipController;
    platform::AnyCancellable settingsSubscription;
    // The values that applySettings() has applied last. A setting has changed if the store has another value.
    Shortcut appliedShortcut;
    Shortcut appliedPipFrontmostShortcut;
    double appliedPollInterval = 0;
    bool appliedAlwaysOnTop = true;
    /// True from the moment a prompt or a mirror is shown until the session ends. Meanwhile no other
    /// window is offered.
    bool activeSession = false;

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
