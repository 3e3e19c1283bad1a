#include "app/AppDelegate.h"

#include "platform/appkit/NSMenu.h"
#include "platform/appkit/NSStatusBar.h"
#include "platform/coregraphics/CGScreenCaptureAccess.h"
#include "platform/dispatch/DispatchQueue.h"
#include "platform/swiftui/NSHostingController.h"
#include "settings/SettingsStore.h"
#include "settings/SettingsView.h"

namespace mirrolet {

using namespace platform;

namespace {

AppDelegate::Shortcut shortcutIn(const SettingsStore& store) {
    return {store.shortcutKeyCode(), store.shortcutModifiers()};
}

AppDelegate::Shortcut pipFrontmostShortcutIn(const SettingsStore& store) {
    return {store.pipFrontmostShortcutKeyCode(), store.pipFrontmostShortcutModifiers()};
}

} // namespace

std::shared_ptr<AppDelegate> AppDelegate::make() {
    return std::shared_ptr<AppDelegate>(new AppDelegate);
}

AppDelegate::AppDelegate() : windowMonitor(WindowMonitor::make()), hotkeyManager(HotkeyManager::make()) {}

AppDelegate::~AppDelegate() {
    statusItem = nullptr;
    monitoringMenuItem = nullptr;
    settingsWindow = nullptr;
    windowMonitor = nullptr;
    hotkeyManager = nullptr;
    promptPanel = nullptr;
    pipController = nullptr;
    settingsSubscription.cancel();
}

void AppDelegate::applicationDidFinishLaunching() {
    NSApplication::shared().setActivationPolicy(NSApplication::ActivationPolicy::accessory);
    setupStatusItem();
    wireMonitorCallbacks();
    registerHotkeys();
    subscribeToSettings();
    if (SettingsStore::shared().startMonitoringOnLaunch())
        windowMonitor->start();
    updateMonitoringTitle();
    CGRequestScreenCaptureAccess();
}

void AppDelegate::setupStatusItem() {
    const auto item = NSStatusBar::system().statusItem(NSSquareStatusItemLength);
    if (auto* button = item->button()) {
        if (const auto image = NSImage::systemSymbol("pip.fill", "Mirrolet"))
            button->setImage(image);
        else
            button->setTitle("PiP");
    }
    item->setMenu(makeMenu());
    statusItem = item;
}

std::shared_ptr<NSMenu> AppDelegate::makeMenu() {
    const auto action = [weak = weak_from_this()](void (AppDelegate::*run)()) {
        return [weak, run] {
            if (const auto delegate = weak.lock())
                (*delegate.*run)();
        };
    };
    auto menu = std::make_shared<NSMenu>();
    monitoringMenuItem =
        std::make_shared<NSMenuItem>("Monitoring Active", action(&AppDelegate::toggleMonitoring));
    menu->addItem(monitoringMenuItem);
    menu->addItem(std::make_shared<NSMenuItem>("PiP Frontmost Window", action(&AppDelegate::manualTrigger)));
    menu->addItem(NSMenuItem::separator());
    menu->addItem(std::make_shared<NSMenuItem>("Settings…", action(&AppDelegate::showSettings), ","));
    menu->addItem(NSMenuItem::separator());
    menu->addItem(std::make_shared<NSMenuItem>("Quit Mirrolet", action(&AppDelegate::quit), "q"));
    return menu;
}

void AppDelegate::wireMonitorCallbacks() {
    windowMonitor->onCallDetected = [weak = weak_from_this()](const DetectedWindowInfo& info) {
        if (const auto delegate = weak.lock())
            delegate->callDetected(info);
    };
    windowMonitor->onCallEnded = [weak = weak_from_this()] {
        if (const auto delegate = weak.lock())
            delegate->endSession();
    };
}

void AppDelegate::registerHotkeys() {
    hotkeyManager->onHotkeyPressed = [weak = weak_from_this()](HotkeyID id) {
        if (const auto delegate = weak.lock())
            delegate->handleHotkey(id);
    };
    const auto& store = SettingsStore::shared();
    appliedShortcut = shortcutIn(store);
    appliedPipFrontmostShortcut = pipFrontmostShortcutIn(store);
    appliedPollInterval = store.pollInterval();
    appliedAlwaysOnTop = store.pipAlwaysOnTop();
    hotkeyManager->registerHotkey(HotkeyID::togglePiPVisibility, appliedShortcut.keyCode,
                                  appliedShortcut.modifiers);
    hotkeyManager->registerHotkey(HotkeyID::pipFrontmostWindow, appliedPipFrontmostShortcut.keyCode,
                                  appliedPipFrontmostShortcut.modifiers);
}

void AppDelegate::subscribeToSettings() {
    settingsSubscription =
        SettingsStore::shared().objectWillChange.sinkOn(DispatchQueue::main(), [weak = weak_from_this()] {
            if (const auto delegate = weak.lock())
                delegate->applySettings();
        });
}

/// Applies changed shortcuts, a changed poll interval and a changed always-on-top setting. Every other
/// setting needs no such step, because it is read from the store each time it is used.
void AppDelegate::applySettings() {
    const auto& store = SettingsStore::shared();
    applyShortcut(HotkeyID::togglePiPVisibility, shortcutIn(store), appliedShortcut);
    applyShortcut(HotkeyID::pipFrontmostWindow, pipFrontmostShortcutIn(store), appliedPipFrontmostShortcut);
    if (store.pollInterval() != appliedPollInterval) {
        appliedPollInterval = store.pollInterval();
        windowMonitor->restartIfMonitoring();
    }
    if (store.pipAlwaysOnTop() != appliedAlwaysOnTop) {
        appliedAlwaysOnTop = store.pipAlwaysOnTop();
        applyAlwaysOnTop();
    }
}

void AppDelegate::applyShortcut(HotkeyID id, Shortcut wanted, Shortcut& applied) {
    if (wanted == applied)
        return;
    // The shortcut counts as applied even if registering it fails. So the program does not try again until
    // the user changes the shortcut.
    applied = wanted;
    hotkeyManager->registerHotkey(id, wanted.keyCode, wanted.modifiers);
}

void AppDelegate::applyAlwaysOnTop() {
    if (pipController && pipController->panel)
        pipController->panel->setLevel(appliedAlwaysOnTop ? NSWindowLevel::floating : NSWindowLevel::normal);
}

void AppDelegate::updateMonitoringTitle() {
    if (monitoringMenuItem)
        monitoringMenuItem->setTitle(windowMonitor->isMonitoring() ? "Monitoring Active"
                                                                   : "Monitoring Paused");
}

void AppDelegate::toggleMonitoring() {
    if (windowMonitor->isMonitoring())
        windowMonitor->stop();
    else
        windowMonitor->start();
    updateMonitoringTitle();
}

/// Shows the settings window, which is created once. Closing the window only hides it, so the window keeps
/// its tab and its fields.
void AppDelegate::showSettings() {
    if (!settingsWindow) {
        settingsWindow = NSWindow::withContentViewController(NSHostingController(SettingsView().body()));
        settingsWindow->setTitle("Mirrolet Settings");
        settingsWindow->setStyleMask(NSWindowStyleMask::titled | NSWindowStyleMask::closable |
                                     NSWindowStyleMask::miniaturizable);
        settingsWindow->isReleasedWhenClosed = false;
        settingsWindow->center();
    }
    NSApplication::shared().activateIgnoringOtherApps();
    settingsWindow->makeKeyAndOrderFront();
}

void AppDelegate::quit() {
    NSApplication::shared().terminate();
}

/// Ends monitoring and the session. The destructor of the HotkeyManager unregisters the shortcuts.
void AppDelegate::applicationWillTerminate() {
    windowMonitor->stop();
    if (pipController)
        pipController->stop();
}

} // namespace mirrolet
