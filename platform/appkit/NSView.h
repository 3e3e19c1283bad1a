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

/// A node of a window's content: a frame in its superview's coordinates (y upwards), what the view draws,
/// what it does with events. A view has no native window of its own: the whole tree of views is painted and
/// fed with events by the window that shows it. Main thread only. Always owned by a std::shared_ptr.
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
    /// The size that the view asks for, if any.
    [[nodiscard]] virtual std::optional<NSSize> intrinsicContentSize() const { return std::nullopt; }

    /// A rectangle of this view's coordinates in those of its window (y upwards from the bottom-left corner).
    [[nodiscard]] NSRect convertToWindow(NSRect rect) const;
    /// A point of the window's coordinates in those of this view.
    [[nodiscard]] NSPoint convertFromWindow(NSPoint point) const;

    /// Adds on top of the subviews that are there.
    void addSubview(const std::shared_ptr<NSView>& view);
    [[nodiscard]] const std::vector<std::shared_ptr<NSView>>& subviews() const { return children; }
    [[nodiscard]] NSView* superview() const { return parent; }

    [[nodiscard]] double alphaValue() const { return alpha; }
    void setAlphaValue(double value);
    /// Moves the alpha to a value over the duration of the animation group that runs now. A new call changes
    /// the target.
    void animateAlphaValue(double target);

    [[nodiscard]] const CALayer& layer() const { return properties; }
    void setLayer(CALayer layer);

    /// Asks for the view to be drawn again.
    void setNeedsDisplay();
    /// Draws into the current drawing, in this view's coordinates.
    virtual void draw(NSRect dirtyRect);

    virtual void mouseDown(const NSEvent& event);
    virtual void mouseDragged(const NSEvent& event);
    virtual void mouseUp(const NSEvent& event);
    virtual void keyDown(const NSEvent& event);
    [[nodiscard]] virtual bool acceptsFirstResponder() const { return false; }
    /// Asked when another view takes the focus. Subclasses call the base.
    virtual bool resignFirstResponder() { return true; }
    [[nodiscard]] virtual bool isFirstResponder() const;

    /// Called when the view's size or place changes; adds the cursor rectangles again.
    virtual void resetCursorRects();
    void addCursorRect(NSRect rect, NSCursor cursor);
    /// The cursor of the first rectangle around a point of this view's coordinates; arrow outside of them.
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

    /// The deepest visible view at a point of the superview's coordinates that takes clicks; nullptr for
    /// none.
    [[nodiscard]] virtual NSView* hitTest(NSPoint point);

    void addConstraint(const NSLayoutConstraint& constraint) override;

    /// Present content of the view for assistive software; empty for none. It and the tool tip are read again
    /// after setNeedsDisplay().
    std::string accessibilityValue;
    std::string toolTip;

    /// The Qt widget that fills this view, which keeps the widget, or nullptr. Asked of a window's content
    /// view: its native window then shows the widget, with corners cut at the view's layer().cornerRadius.
    [[nodiscard]] virtual QWidget* hostedWidget() { return nullptr; }

    /// Makes a view (nullptr: none) of this view's window the one that gets the keys. Does nothing outside a
    /// window.
    void makeFirstResponder(NSView* view);

    /// Of a root view: where it is shown from now on; nullptr for nowhere.
    void setContext(ViewContext* context) { rootContext = context; }

  protected:
    /// Where this view is shown; nullptr outside a window.
    [[nodiscard]] ViewContext* context() const;

  private:
    NSLayoutAnchor anchor(NSLayoutAttribute attribute) { return {weak_from_this(), attribute}; }
    void layoutSubviews();
    void resolveConstraints(NSSize container);
    void refreshCursorRects();

    NSRect frameRect;
    NSView* parent = nullptr;
    ViewContext* rootContext = nullptr; ///< Of a root view only.
    std::vector<std::shared_ptr<NSView>> children;
    double alpha = 1;
    CALayer properties;
    std::vector<std::shared_ptr<NSTrackingArea>> areas;
    std::vector<std::pair<NSRect, NSCursor>> cursorRects;
    std::vector<NSLayoutConstraint> constraints;
    std::unique_ptr<AlphaAnimation> animation;
};

} // namespace mirrolet::platform
