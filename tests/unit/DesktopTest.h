#pragma once

#include "platform/desktop/fake/FakeDesktop.h"
#include "platform/dispatch/fake/VirtualTime.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <vector>

namespace mirrolet {

/// A test on a scripted desktop and a clock of its own. What a test adds to `atEnd` runs before the desktop
/// is checked: there it lets go of what it made.
class DesktopTest : public testing::Test {
  protected:
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
