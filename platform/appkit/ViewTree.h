#pragma once

#include "platform/appkit/NSEvent.h"
#include "platform/appkit/NSView.h"
#include "platform/coregraphics/Geometry.h"

#include <QPainter>
#include <QPointF>

#include <functional>
#include <map>
#include <memory>
#include <optional>

class QKeyEvent;

namespace mirrolet::platform {

class NSImageView;

/// What shows one tree of views and feeds it with events: painting, hit testing, the pointer, the keyboard.
/// This is the one place where y is turned over: positions come in and pictures go out with y downwards from
/// the top-left, in device-independent pixels. Main thread.
class ViewTree {
  public:
    /// What the tree asks of the window or widget that hosts it.
    struct Host {
        std::function<void()> contentChanged;    ///< Something has to be drawn again.
        std::function<void()> pictureChanged;    ///< Only the picture of the image view has.
        std::function<void(NSCursor)> setCursor; ///< The pointer's shape here.
        std::function<void(bool)> takeKeyboard;  ///< A view wants the keyboard (or no longer).
    };

    explicit ViewTree(Host host);
    ~ViewTree();
    ViewTree(const ViewTree&) = delete;
    ViewTree& operator=(const ViewTree&) = delete;

    void setRoot(const std::shared_ptr<NSView>& view);
    [[nodiscard]] const std::shared_ptr<NSView>& root() const { return rootView; }

    /// Paints everything into a painter whose origin is the top-left corner.
    void paint(QPainter& painter) { paintTree(painter, Content::all); }
    /// Paints what lies over the picture: all but the root's background and the picture of the image view.
    void paintOverlay(QPainter& painter) { paintTree(painter, Content::overlay); }
    /// The visible image view that shows a window's picture, if there is one.
    [[nodiscard]] NSImageView* pictureView() const;

    /// Between a press and its release no view is told that the pointer comes or goes.
    void mousePressed(QPointF position, QPointF onScreen);
    void mouseMoved(QPointF position, QPointF onScreen, bool pressed);
    void mouseReleased(QPointF position, QPointF onScreen);
    void pointerEntered(QPointF position, QPointF onScreen);
    void pointerLeft();
    /// The window goes away under the pointer: a press that was not released is released, over nothing.
    void pressLost();
    /// False if no view took the key.
    bool keyPressed(const QKeyEvent& event);
    void keyboardLost();

    void makeFirstResponder(NSView* view);
    /// A press has not been released yet.
    [[nodiscard]] bool isPressed() const { return !pressedView.expired(); }
    [[nodiscard]] bool isFirstResponder(const NSView* view) const;
    void viewChanged() { host.contentChanged(); }
    void pictureChanged() { host.pictureChanged(); }
    /// An area that replaces an entered one counts as entered, because its owner has been told already.
    void trackingAreaAdded(const std::shared_ptr<NSTrackingArea>& area);

  private:
    enum class Content { all, overlay };

    void paintTree(QPainter& painter, Content content);
    void paintView(QPainter& painter, NSView& view, Content content);
    [[nodiscard]] NSPoint toTree(QPointF position) const;
    [[nodiscard]] NSEvent mouseEvent(NSEventType type, QPointF position, QPointF onScreen) const;
    [[nodiscard]] bool pointerIsIn(const NSView& view, const NSTrackingArea& area) const;
    void updateTracking();
    void trackIn(const NSView& view);
    void track(const NSView& view, const std::shared_ptr<NSTrackingArea>& area);
    void updateCursor();
    [[nodiscard]] NSCursor cursorAtPointer() const;

    Host host;
    std::shared_ptr<NSView> rootView;
    std::weak_ptr<NSView> pressedView;
    std::weak_ptr<NSView> firstResponder;
    std::optional<NSPoint> pointer; ///< In tree coordinates, y upwards; none while it is elsewhere.
    /// The areas whose owners were told that the pointer is inside, each with its owner.
    std::map<std::weak_ptr<NSTrackingArea>, std::weak_ptr<NSWindow>, std::owner_less<>> entered;
    NSCursor cursor = NSCursor::arrow;
};

/// Where y is turned over on the screen: the main screen's bottom-left corner is the origin of screen
/// coordinates.
QPointF toQtScreen(NSPoint point);
NSPoint fromQtScreen(QPointF point);

} // namespace mirrolet::platform
