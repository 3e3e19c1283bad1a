#include "pip/PiPPanel.h"

#include "tests/unit/DesktopTest.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QGuiApplication>
#include <QMouseEvent>
#include <QWindow>

namespace mirrolet {
namespace {

using namespace platform;

constexpr desktop::WindowNumber callWindow = 77;

/// Sends pointer events to a native window. Positions are relative to the top-left corner of the main screen.
class Pointer {
  public:
    explicit Pointer(QWindow& target) : window(target) {}

    void move(QPointF at) { send(QEvent::MouseMove, at, Qt::NoButton, Qt::NoButton); }
    void press(QPointF at) { send(QEvent::MouseButtonPress, at, Qt::LeftButton, Qt::LeftButton); }
    void drag(QPointF at) { send(QEvent::MouseMove, at, Qt::NoButton, Qt::LeftButton); }
    void release(QPointF at) { send(QEvent::MouseButtonRelease, at, Qt::LeftButton, Qt::NoButton); }
    void click(QPointF at) {
        press(at);
        release(at);
    }
    void enter(QPointF at) {
        QEnterEvent event(at - window.position(), at - window.position(), at);
        QCoreApplication::sendEvent(&window, &event);
    }
    void leave() {
        QEvent event(QEvent::Leave);
        QCoreApplication::sendEvent(&window, &event);
    }

  private:
    void send(QEvent::Type type, QPointF at, Qt::MouseButton button, Qt::MouseButtons held) {
        QMouseEvent event(type, at - window.position(), at, button, held, Qt::NoModifier);
        QCoreApplication::sendEvent(&window, &event);
    }

    QWindow& window;
};

class PiPPanelTest : public DesktopTest {
  protected:
    PiPPanelTest() {
        panel->orderFrontRegardless();
        settle();
        atEnd.emplace_back([this] { panel->close(); });
        atEnd.emplace_back([this] { panel.reset(); });
    }

    static void settle() { QCoreApplication::processEvents(); }
    static QWindow& native() { return *QGuiApplication::topLevelWindows().first(); }
    desktop::fake::PresenterRecord& presented() { return *desktop.presenters().back(); }

    std::shared_ptr<PiPPanel> panel = PiPPanel::make({{200, 300}, {100, 80}});
};

TEST_F(PiPPanelTest, AMoveFollowsThePointerAndIsNotClamped) {
    Pointer pointer(native());
    const QPointF start = native().position() + QPoint(50, 40);
    pointer.press(start);
    pointer.drag(start + QPointF(30, 20));
    EXPECT_EQ(panel->frame(), (NSRect{{230, 280}, {100, 80}}));
    pointer.drag(start + QPointF(-5000, 0));
    EXPECT_EQ(panel->frame().origin, (NSPoint{-4800, 300}));
    pointer.release(start);
    pointer.drag(start + QPointF(10, 10)); // The button is not pressed any more.
    EXPECT_EQ(panel->frame().origin, (NSPoint{-4800, 300}));
}

TEST_F(PiPPanelTest, TheGripResizesFromAFixedTopLeftCornerDownToFiftyPoints) {
    Pointer pointer(native());
    const QPointF grip = native().position() + QPoint(95, 75);
    pointer.enter(grip);
    EXPECT_EQ(native().cursor().shape(), Qt::CrossCursor);
    pointer.press(grip);
    pointer.drag(grip + QPointF(60, 40));
    // A second event at the same position does not make the panel grow further.
    pointer.drag(grip + QPointF(60, 40));
    EXPECT_EQ(panel->frame(), (NSRect{{200, 260}, {160, 120}}));
    EXPECT_EQ(panel->closeButton->frame(), (NSRect{{8, 92}, {20, 20}}));
    EXPECT_EQ(panel->resizeHandle->frame(), (NSRect{{136, 0}, {24, 24}}));
    EXPECT_EQ(panel->contentView()->trackingAreas().size(), 1u);
    // The pointer moves by more than the panel's size. The panel shrinks only to 50 x 50.
    for (const double step : {-70.0, -70.0, -70.0})
        pointer.drag(grip + QPointF(step, step) * 2);
    EXPECT_EQ(panel->frame(), (NSRect{{200, 330}, {50, 50}}));
    pointer.release(grip);
    pointer.enter(native().position() + QPoint(10, 10));
    EXPECT_EQ(native().cursor().shape(), Qt::ArrowCursor);
}

TEST_F(PiPPanelTest, ADragEndsWhenTheWindowGoesAwayUnderThePointer) {
    int asked = 0;
    panel->onCloseRequested = [&] { ++asked; };
    const std::vector<std::function<void()>> departures = {
        [this] {
            panel->orderOut();
            panel->orderFrontRegardless();
        },
        [this] { panel->setLevel(NSWindowLevel::normal); },
    };
    // The places lie on the picture, the grip and the close button.
    const std::vector<QPoint> places = {{50, 40}, {95, 75}, {18, 18}};
    for (const auto& depart : departures) {
        for (const auto& place : places) {
            panel->setLevel(NSWindowLevel::floating);
            settle();
            const auto before = panel->frame();
            const QPointF start = native().position() + place;
            Pointer(native()).press(start);
            depart();
            settle();
            EXPECT_FALSE(panel->dragOrigin);
            Pointer(native()).drag(start + QPointF(30, 20));
            EXPECT_EQ(panel->frame(), before) << place.x();
        }
    }
    EXPECT_EQ(asked, 0);
}

TEST_F(PiPPanelTest, TheCloseButtonAsksOnceAndIsNotADrag) {
    int asked = 0;
    panel->onCloseRequested = [&] { ++asked; };
    Pointer pointer(native());
    const QPointF button = native().position() + QPoint(18, 18);
    pointer.click(button);
    EXPECT_EQ(asked, 1);
    EXPECT_FALSE(panel->dragOrigin);
    pointer.press(button);
    // If the button is released outside of the close button, the panel does not close.
    pointer.release(native().position() + QPoint(60, 60));
    EXPECT_EQ(asked, 1);
}

TEST_F(PiPPanelTest, TheCloseButtonFadesInUnderThePointerAndOutAgain) {
    Pointer pointer(native());
    const auto waitForAlpha = [this](double alpha) {
        const QDeadlineTimer deadline(1000); // A fade takes much less than a second.
        while (panel->closeButton->alphaValue() != alpha && !deadline.hasExpired())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 50);
        settle(); // Handles events that a slow machine has delayed.
        return panel->closeButton->alphaValue();
    };
    EXPECT_EQ(panel->closeButton->alphaValue(), 0);
    pointer.enter(native().position() + QPoint(50, 40));
    EXPECT_LT(panel->closeButton->alphaValue(), 1);
    EXPECT_EQ(waitForAlpha(1), 1);
    const auto pixel = [&](int x, int y) { return presented().overlay.pixels.at(y * 100 + x); };
    EXPECT_EQ(pixel(18, 18), 0xffffffffu) << "the cross";
    EXPECT_EQ(pixel(18, 18 - 8) >> 16 & 0xff, 0xffu) << "the red disc";
    EXPECT_LT(pixel(18, 18 - 8) & 0xff, 0x60u);
    panel->setFrame({{200, 300}, {120, 90}}, true); // The pointer stays inside the panel.
    EXPECT_EQ(panel->closeButton->alphaValue(), 1);
    pointer.leave();
    EXPECT_EQ(waitForAlpha(0), 0);
    pointer.enter(native().position() + QPoint(50, 40));
    EXPECT_EQ(waitForAlpha(1), 1);
    panel->orderOut(); // Hides the panel under the pointer.
    panel->orderFrontRegardless();
    EXPECT_EQ(waitForAlpha(0), 0);
}

TEST_F(PiPPanelTest, ThePictureIsPutInTheMiddleByTheServerAndTheOverlayIsPaintedOnlyWhenItChanges) {
    desktop.capture().setPicture(callWindow, {400, 200}, 0x336699);
    const auto image = desktop.capture().image(callWindow);
    const int overlays = presented().overlaysSet;
    for (int frame = 0; frame < 3; ++frame) {
        panel->imageView->setImage(std::make_shared<NSImage>(image, NSSize{400, 200}));
        settle();
    }
    EXPECT_EQ(presented().picture, image);
    EXPECT_EQ(presented().pictureTarget, (desktop::PixelRect{0, 15, 100, 50}));
    EXPECT_EQ(presented().picturesSet, 2); // One call set no picture, and one call set `image`.
    EXPECT_EQ(presented().overlaysSet, overlays);
    EXPECT_EQ(presented().background, 0xff000000u);
    EXPECT_EQ(presented().cornerRadius, 10);

    panel->orderOut();
    settle();
    EXPECT_EQ(presented().picture, nullptr) << "nothing is drawn for what nobody sees";
    panel->orderFrontRegardless();
    settle();
    EXPECT_EQ(presented().picture, image);
    EXPECT_EQ(presented().pictureTarget, (desktop::PixelRect{0, 15, 100, 50}));

    const auto& overlay = presented().overlay;
    const auto pixel = [&](int x, int y) { return overlay.pixels[static_cast<std::size_t>(y) * 100 + x]; };
    EXPECT_EQ(pixel(50, 40), 0u);           // The overlay is transparent over the picture.
    EXPECT_NEAR(pixel(50, 0) >> 24, 64, 2); // The border is white with an alpha of a quarter.
    EXPECT_EQ(pixel(14, 14), 0u);           // The close button appears only under the pointer.
    EXPECT_GT(pixel(92, 72) >> 24, 100u);   // This pixel is on one line of the grip.
    EXPECT_GT(pixel(90, 70) >> 24, 50u);    // This pixel is on the other line of the grip.
    EXPECT_EQ(pixel(96, 75), 0u);           // The grip's first line has no length, so it is not drawn.
}

TEST_F(PiPPanelTest, ALevelOnTheOtherSideOfNormalGetsAWindowOfTheOtherKind) {
    EXPECT_EQ(desktop.panelWindows().back()->stacking, desktop::PanelStacking::floating);
    panel->setLevel(NSWindowLevel::normal);
    settle();
    ASSERT_EQ(desktop.panelWindows().size(), 2u);
    EXPECT_FALSE(desktop.panelWindows().front()->alive);
    EXPECT_EQ(desktop.panelWindows().back()->stacking, desktop::PanelStacking::amongNormal);
    EXPECT_TRUE(panel->isVisible());
    EXPECT_EQ(desktop.panelWindows().back()->timesFocused, 0);
}

TEST_F(PiPPanelTest, AWindowManagerThatResizesItMovesTheControlsToo) {
    panel->setLevel(NSWindowLevel::normal);
    settle();
    auto& window = native();
    window.setGeometry(QRect(window.position(), QSize(160, 120)));
    settle();
    EXPECT_EQ(panel->frame(), (NSRect{{200, 260}, {160, 120}}));
    EXPECT_EQ(panel->closeButton->frame(), (NSRect{{8, 92}, {20, 20}}));
    EXPECT_EQ(window.size(), QSize(160, 120));
}

TEST_F(PiPPanelTest, AMirrorThatTheWindowManagerStopsAtAnEdgeIsWhereTheWindowManagerPutIt) {
    panel->setLevel(NSWindowLevel::normal);
    settle();
    auto& window = native();
    const QPointF start = window.position() + QPoint(50, 40);
    Pointer pointer(window);
    pointer.press(start);
    pointer.drag(start - QPointF(5000, 0));
    window.setPosition(0, window.y());
    settle();
    pointer.release(start - QPointF(5000, 0));
    EXPECT_EQ(panel->frame(), (NSRect{{0, 300}, {100, 80}}));
}

/// Logs when the pointer enters and leaves the panel.
class HoverLog final : public NSPanel {
  public:
    HoverLog() : NSPanel({{200, 300}, {100, 80}}, NSWindowStyleMask::nonactivatingPanel) {}

    void replaceArea() {
        contentView()->removeTrackingArea(area);
        area = std::make_shared<NSTrackingArea>(NSTrackingArea{{},
                                                               NSTrackingAreaOptions::mouseEnteredAndExited |
                                                                   NSTrackingAreaOptions::inVisibleRect,
                                                               weak_from_this()});
        contentView()->addTrackingArea(area);
    }
    void mouseEntered(const NSEvent& /*event*/) override { log += "in;"; }
    void mouseExited(const NSEvent& /*event*/) override { log += "out;"; }

    std::string log;

  private:
    std::shared_ptr<NSTrackingArea> area;
};

class PiPPanelTestOfTrackingAreas : public DesktopTest {};

TEST_F(PiPPanelTestOfTrackingAreas, SaysNothingWhileAButtonIsHeldAndTheTruthAfterTheRelease) {
    const QPointF inside(40, 30);
    const QPointF outside(300, 30);
    struct Row {
        const char* what;
        std::function<void(Pointer&, HoverLog&)> drag;
        const char* after;
    };
    const auto panel = std::make_shared<HoverLog>();
    panel->setContentView(std::make_shared<NSView>());
    panel->orderFrontRegardless();
    QCoreApplication::processEvents();
    auto& window = *QGuiApplication::topLevelWindows().first();
    Pointer pointer(window);
    const auto at = [&window](QPointF place) { return window.position() + place; };
    const Row rows[] = {
        {"out and back in",
         [&](Pointer& p, HoverLog&) {
             p.enter(at(inside));
             p.drag(at(inside));
             p.release(at(inside));
         },
         "in;"},
        {"released outside", [&](Pointer& p, HoverLog&) { p.release(at(outside)); }, "in;out;"},
        {"the release went to another client", [&](Pointer& p, HoverLog&) { p.move(at(outside)); },
         "in;out;"},
        {"the area replaced on the way",
         [&](Pointer& p, HoverLog& log) {
             log.replaceArea();
             log.replaceArea();
             p.release(at(outside));
         },
         "in;out;"},
        {"the area replaced before the way back",
         [&](Pointer& p, HoverLog& log) {
             log.replaceArea();
             p.drag(at(inside));
             p.release(at(inside));
         },
         "in;"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        pointer.leave();
        panel->log.clear();
        panel->replaceArea();
        pointer.enter(at(inside));
        pointer.press(at(inside));
        pointer.drag(at(outside));
        pointer.leave();
        EXPECT_EQ(panel->log, "in;");
        row.drag(pointer, *panel);
        EXPECT_EQ(panel->log, row.after);
    }
    panel->close();
}

} // namespace
} // namespace mirrolet
