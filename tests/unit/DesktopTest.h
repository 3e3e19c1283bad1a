#pragma once

#include "platform/carbon/CarbonEvents.h"
#include "platform/desktop/fake/FakeDesktop.h"
#include "platform/dispatch/fake/VirtualTime.h"
#include "settings/SettingsStore.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <vector>

namespace mirrolet {

/// Installs a scripted desktop, a clock that only the test advances, and the settings of a first start. After
/// the test, runs the steps in `atEnd`, which release the test's objects. Then expects that the desktop was
/// not misused.
class DesktopTest : public testing::Test {
  protected:
    DesktopTest() {
        platform::FollowDesktopHotKeys();
        // All tests share one store, so each test sets its values.
        auto& store = SettingsStore::shared();
        store.setMonitoringScope(MonitoringScope::specificApps);
        store.setSelectedAppIdentifiers({"net.whatsapp.WhatsApp"});
        store.setPollInterval(2);
        store.setPromptTimeout(15);
        store.setStartMonitoringOnLaunch(true);
        store.setPipAlwaysOnTop(true);
        store.setPipCorner(PiPCorner::bottomRight);
        store.setShortcutKeyCode(35);
        store.setPipFrontmostShortcutKeyCode(3);
    }
    ~DesktopTest() override { platform::desktop::Desktop::setCurrent(nullptr); }

    void TearDown() override {
        for (const auto& step : atEnd)
            step();
        time.run();
        EXPECT_THAT(desktop.misuses(), testing::IsEmpty());
    }

    platform::dispatch::VirtualTime time;
    platform::desktop::fake::FakeDesktop& desktop = platform::desktop::fake::FakeDesktop::install();
    std::vector<std::function<void()>> atEnd;
};

} // namespace mirrolet
