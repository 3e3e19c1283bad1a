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

/// Passes pointer and key events to one tree of views. The positions that come in are in points from the
/// window's top-left corner, with y downwards. ViewTree converts them to view coordinates, with y upwards.
/// Main thread.
class ViewTree final : private ViewContext {
  public:
    /// The interface of the window or widget that shows a tree.
    class Host {
      public:
        virtual ~Host() = default;
        /// Called when the content has to be drawn again.
        virtual void contentChanged() = 0;
        /// Called when only the picture of the source window has to be drawn again.
        virtual void pictureChanged() = 0;
        /// Sets the pointer's shape over this host.
        virtual void setCursor(NSCursor cursor) = 0;
        /// Called when the first responder has changed. `exists` tells whether a view is first responder now.
        /// If so, the host needs the focus to get keys.
        virtual void firstResponderChanged(bool exists) = 0;
    };

    /// Makes a tree without views. The host must outlive the tree.
    explicit ViewTree(Host& host) : host(host) {}
    ~ViewTree() override;
    ViewTree(const ViewTree&) = delete;
    ViewTree& operator=(const ViewTree&) = delete;

    void setRoot(const std::shared_ptr<NSView>& view);
    [[nodiscard]] const std::shared_ptr<NSView>& root() const { return rootView; }

    void paint(QPainter& painter, PaintedParts parts = PaintedParts::all) const;
    /// Returns the visible image view that shows the picture of the source window, or nullptr.
    [[nodiscard]] NSImageView* pictureView() const;

    /// Passes a press to the view at the position. Until the mouse button is released, no view is told that
    /// the pointer enters or leaves.
    void mousePressed(QPointF position, QPointF onScreen);
    void mouseMoved(QPointF position, QPointF onScreen, bool pressed);
    void mouseReleased(QPointF position, QPointF onScreen);
    void pointerEntered(QPointF position, QPointF onScreen);
    void pointerLeft();
    /// Ends a press whose release will never arrive, for example because the window was hidden. The pressed
    /// view gets a release at a position outside of every view, so the view does not act.
    void pressLost();
    /// Returns whether a press has not been released yet.
    [[nodiscard]] bool isPressed() const { return !pressedView.expired(); }

    /// Passes a key to the first responder. Returns false if no view took the key.
    bool keyPressed(const QKeyEvent& event);
    /// Takes the first-responder role from the view that has it, unless that view refuses.
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
