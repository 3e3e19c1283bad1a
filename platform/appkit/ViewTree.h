#pragma once

#include "platform/appkit/NSEvent.h"
#include "platform/appkit/NSView.h"
#include "platform/appkit/PointerTracking.h"
#include "platform/appkit/ViewContext.h"
#include "platform/appkit/ViewPainting.h"

#include <QPointF>

#include <memory>

class QKeyEvent;

namespace mirrolet::platform {

class NSImageView;

/// Shows one tree of views and feeds the views with events: the pointer and the keys. Positions come in with
/// y downwards from the window's top-left corner, in device-independent pixels, and are turned over here.
/// Main thread.
class ViewTree final : private ViewContext {
  public:
    /// The window or widget that hosts a tree.
    class Host {
      public:
        virtual ~Host() = default;
        /// Something has to be drawn again.
        virtual void contentChanged() = 0;
        /// The picture of the image view has to be drawn again, and nothing else.
        virtual void pictureChanged() = 0;
        /// The pointer's shape over this host.
        virtual void setCursor(NSCursor cursor) = 0;
        /// A view that `exists` has become first responder and needs the focus to get keys; else there is no
        /// first responder any more.
        virtual void firstResponderChanged(bool exists) = 0;
    };

    /// The host outlives the tree.
    explicit ViewTree(Host& host) : host(host) {}
    ~ViewTree() override;
    ViewTree(const ViewTree&) = delete;
    ViewTree& operator=(const ViewTree&) = delete;

    void setRoot(const std::shared_ptr<NSView>& view);
    [[nodiscard]] const std::shared_ptr<NSView>& root() const { return rootView; }

    void paint(QPainter& painter, PaintedParts parts = PaintedParts::all) const;
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
    /// A press has not been released yet.
    [[nodiscard]] bool isPressed() const { return !pressedView.expired(); }

    /// False if no view took the key.
    bool keyPressed(const QKeyEvent& event);
    /// Afterwards no view is first responder, unless that view refuses.
    void resignFirstResponder() { makeFirstResponder(nullptr); }
    [[nodiscard]] bool hasFirstResponder() const { return !isFirstResponder(nullptr); }

  private:
    void viewChanged() override { host.contentChanged(); }
    void pictureChanged() override { host.pictureChanged(); }
    void trackingAreaAdded(const std::shared_ptr<NSTrackingArea>& area) override;
    void makeFirstResponder(NSView* view) override;
    [[nodiscard]] bool isFirstResponder(const NSView* view) const override;

    [[nodiscard]] NSPoint toWindow(QPointF position) const;
    [[nodiscard]] NSEvent mouseEvent(NSEventType type, QPointF position) const;
    void updateTracking();
    void pointerChanged();

    Host& host;
    std::shared_ptr<NSView> rootView;
    std::weak_ptr<NSView> pressedView;
    std::weak_ptr<NSView> firstResponder;
    PointerTracking tracking;
    NSCursor cursor = NSCursor::arrow;
};

} // namespace mirrolet::platform
