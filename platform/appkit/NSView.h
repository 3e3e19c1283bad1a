#pragma once

#include "platform/appkit/CALayer.h"
#include "platform/appkit/LayoutItem.h"
#include "platform/appkit/NSEvent.h"
#include "platform/appkit/NSLayoutConstraint.h"
#include "platform/appkit/NSTrackingArea.h"
#include "platform/coregraphics/Geometry.h"

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

class QWidget;

namespace mirrolet::platform {

class AlphaAnimation;
class ViewContext;

enum class NSCursor { arrow, crosshair };

/// A rectangle of a window's content that draws, handles events and has subviews. A view's frame is its
/// rectangle in its superview's coordinates (y upwards). A view has no native window of its own. The window
/// paints its whole tree of views and passes events to the views. Main thread only. Always owned by a
/// std::shared_ptr.
class NSView : public LayoutItem, public std::enable_shared_from_this<NSView> {
  public:
    NSView();
    explicit NSView(NSRect frame);
    ~NSView() override;
    NSView(const NSView&) = delete;
    NSView& operator=(const NSView&) = delete;

    [[nodiscard]] NSRect frame() const { return frameRect; }
    void setFrame(NSRect frame);
    [[nodiscard]] NSRect bounds() const { return {{0, 0}, frameRect.size}; }
    /// Returns the size that the view asks for, if any.
    [[nodiscard]] virtual std::optional<NSSize> intrinsicContentSize() const { return std::nullopt; }

    /// Converts a rectangle from this view's coordinates to the window's (y upwards from the bottom-left
    /// corner).
    [[nodiscard]] NSRect convertToWindow(NSRect rect) const;
    /// Converts a point from the window's coordinates to this view's coordinates.
    [[nodiscard]] NSPoint convertFromWindow(NSPoint point) const;

    /// Adds a subview in front of the subviews that exist already.
    void addSubview(const std::shared_ptr<NSView>& view);
    [[nodiscard]] const std::vector<std::shared_ptr<NSView>>& subviews() const { return children; }
    [[nodiscard]] NSView* superview() const { return parent; }

    [[nodiscard]] double alphaValue() const { return alpha; }
    void setAlphaValue(double value);
    /// Changes the alpha value gradually to `target`. This takes NSAnimationContext::currentDuration()
    /// seconds. A later call replaces the target.
    void animateAlphaValue(double target);

    [[nodiscard]] const CALayer& layer() const { return properties; }
    void setLayer(CALayer layer);

    /// Asks for the view to be drawn again.
    void setNeedsDisplay();
    /// Draws this view with Drawing::current(), in this view's coordinates.
    virtual void draw(NSRect dirtyRect);

    virtual void mouseDown(const NSEvent& event);
    virtual void mouseDragged(const NSEvent& event);
    virtual void mouseUp(const NSEvent& event);
    virtual void keyDown(const NSEvent& event);
    [[nodiscard]] virtual bool acceptsFirstResponder() const { return false; }
    /// Called when this view is about to stop being first responder. Returns true if this view agrees. An
    /// overriding function must call this one.
    virtual bool resignFirstResponder() { return true; }
    [[nodiscard]] virtual bool isFirstResponder() const;

    /// Called when the view's size or place has changed. All cursor rectangles were removed before this call,
    /// so an overriding function adds its rectangles again.
    virtual void resetCursorRects();
    void addCursorRect(NSRect rect, NSCursor cursor);
    /// Returns the cursor of the first cursor rectangle that contains a point in this view's coordinates.
    /// Returns the arrow if there is no such rectangle.
    [[nodiscard]] NSCursor cursorAt(NSPoint point) const;

    void addTrackingArea(const std::shared_ptr<NSTrackingArea>& area);
    void removeTrackingArea(const std::shared_ptr<NSTrackingArea>& area);
    [[nodiscard]] const std::vector<std::shared_ptr<NSTrackingArea>>& trackingAreas() const { return areas; }

    [[nodiscard]] NSLayoutAnchor leadingAnchor() { return anchor(NSLayoutAttribute::leading); }
    [[nodiscard]] NSLayoutAnchor trailingAnchor() { return anchor(NSLayoutAttribute::trailing); }
    [[nodiscard]] NSLayoutAnchor topAnchor() { return anchor(NSLayoutAttribute::top); }
    [[nodiscard]] NSLayoutAnchor bottomAnchor() { return anchor(NSLayoutAttribute::bottom); }
    [[nodiscard]] NSLayoutAnchor widthAnchor() { return anchor(NSLayoutAttribute::width); }
    [[nodiscard]] NSLayoutAnchor heightAnchor() { return anchor(NSLayoutAttribute::height); }

    /// Returns the deepest visible view that takes clicks at a point in the superview's coordinates. Returns
    /// nullptr if there is no such view.
    [[nodiscard]] virtual NSView* hitTest(NSPoint point);

    void addConstraint(const NSLayoutConstraint& constraint) override;

    /// The text that assistive software reads as the view's content; may be empty. After a change of this
    /// text or of the tool tip, call setNeedsDisplay().
    std::string accessibilityValue;
    std::string toolTip;

    /// Returns the Qt widget that fills this view, or nullptr. The view still owns the widget. If a window's
    /// content view has a widget, the native window shows the widget, with corners cut at the view's
    /// layer().cornerRadius.
    [[nodiscard]] virtual QWidget* hostedWidget() { return nullptr; }

    /// Makes `view` the first responder of this view's window. The first responder is the view that gets the
    /// keys. With nullptr, no view gets the keys. Does nothing outside a window.
    void makeFirstResponder(NSView* view);

    /// Sets the object that shows this view and its subviews. nullptr means that nothing shows them. Only for
    /// a view without a superview.
    void setContext(ViewContext* context) { rootContext = context; }

  protected:
    /// Returns the object that shows this view, or nullptr if nothing shows it.
    [[nodiscard]] ViewContext* context() const;

  private:
    NSLayoutAnchor anchor(NSLayoutAttribute attribute) { return {weak_from_this(), attribute}; }
    void layoutSubviews();
    void resolveConstraints(NSSize container);
    void refreshCursorRects();

    NSRect frameRect;
    NSView* parent = nullptr;
    ViewContext* rootContext = nullptr; ///< Set only for a view without a superview.
    std::vector<std::shared_ptr<NSView>> children;
    double alpha = 1;
    CALayer properties;
    std::vector<std::shared_ptr<NSTrackingArea>> areas;
    std::vector<std::pair<NSRect, NSCursor>> cursorRects;
    std::vector<NSLayoutConstraint> constraints;
    std::unique_ptr<AlphaAnimation> animation;
};

} // namespace mirrolet::platform
