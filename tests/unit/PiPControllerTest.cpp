#include "pip/PiPController.h"

#include "platform/appkit/NSScreen.h"
#include "tests/unit/DesktopTest.h"

namespace mirrolet {
namespace {

using namespace platform;

constexpr desktop::WindowNumber callWindow = 77;

class PiPControllerTest : public DesktopTest {
  protected:
    PiPControllerTest() {
        desktop.capture().setPicture(callWindow, {400, 200}, 0x336699);
        controller->onClose = [this] { ++closed; };
        atEnd.emplace_back([this] { controller->stop(); });
        atEnd.emplace_back([this] { controller.reset(); });
    }

    std::shared_ptr<PiPController> controller = std::make_shared<PiPController>(callWindow);
    int closed = 0;
};

TEST_F(PiPControllerTest, StartsOnceCapturesAtOnceAndThenFifteenTimesASecond) {
    controller->start();
    const auto panel = controller->panel;
    controller->start();
    EXPECT_EQ(controller->panel, panel);
    time.run();
    EXPECT_EQ(desktop.capture().captures(callWindow), 1);
    EXPECT_TRUE(panel->imageView->showsWindow());
    EXPECT_EQ(panel->imageView->image()->size(), (NSSize{400, 200}));
    time.advance(2);
    EXPECT_NEAR(desktop.capture().captures(callWindow), 31, 1);
}

TEST_F(PiPControllerTest, AWindowThatIsGoneEndsTheSessionOnceAndTellsTheOwner) {
    controller->start();
    time.run();
    desktop.capture().destroyWindow(callWindow);
    time.advance(0.2);
    EXPECT_FALSE(controller->isRunning());
    EXPECT_EQ(controller->panel, nullptr);
    EXPECT_EQ(closed, 1);
    EXPECT_EQ(desktop.capture().imagesHeld(), 0);
    EXPECT_FALSE(desktop.panelWindows().back()->alive);
}

TEST_F(PiPControllerTest, TheCloseButtonStopsItWithoutAWord) {
    controller->start();
    time.run();
    const auto panel = controller->panel;
    panel->closeButtonTapped();
    EXPECT_FALSE(controller->isRunning());
    EXPECT_EQ(controller->panel, nullptr);
    EXPECT_TRUE(panel->isVisible()); // The panel closes when the main queue runs next.
    time.run();
    EXPECT_FALSE(panel->isVisible());
    const int captures = desktop.capture().captures(callWindow);
    time.advance(1);
    EXPECT_EQ(desktop.capture().captures(callWindow), captures);
    EXPECT_EQ(closed, 0);
}

TEST_F(PiPControllerTest, WhatIsOnItsWayWhenItStopsChangesNothing) {
    for (const bool fails : {false, true}) {
        if (fails)
            desktop.capture().destroyWindow(callWindow);
        // The first tick runs after start(). Its result arrives after stop().
        controller->start();
        const auto panel = controller->panel;
        DispatchQueue::main().async([this] { controller->stop(); });
        time.run();
        EXPECT_EQ(desktop.capture().captures(callWindow), fails ? 2 : 1);
        EXPECT_FALSE(panel->imageView->showsWindow());
    }
    EXPECT_EQ(closed, 0);
}

TEST_F(PiPControllerTest, StartsInTheChosenCornerAtTheChosenLevel) {
    const auto visible = NSScreen::main()->visibleFrame;
    const double left = visible.minX() + 24, right = visible.maxX() - 124;
    const double bottom = visible.minY() + 24, top = visible.maxY() - 124;
    for (const auto& [corner, origin] : {std::pair(PiPCorner::bottomRight, NSPoint{right, bottom}),
                                         std::pair(PiPCorner::bottomLeft, NSPoint{left, bottom}),
                                         std::pair(PiPCorner::topRight, NSPoint{right, top}),
                                         std::pair(PiPCorner::topLeft, NSPoint{left, top})}) {
        const bool onTop = corner != PiPCorner::topLeft;
        SettingsStore::shared().setPipCorner(corner);
        SettingsStore::shared().setPipAlwaysOnTop(onTop);
        controller->start();
        EXPECT_EQ(controller->panel->frame(), (NSRect{origin, {100, 100}}));
        EXPECT_EQ(controller->panel->level(), onTop ? NSWindowLevel::floating : NSWindowLevel::normal);
        controller->stop();
    }
}

} // namespace
} // namespace mirrolet
