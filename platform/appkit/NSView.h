#pragma once

#include "platform/appkit/CALayer.h"
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
class ViewTree;

enum class NSCursor { arrow, crosshair };

/// A node of a window's content: a frame in its superview's coordinates (y upwards), what it draws, what it
/// does with events. It has no window of its own; the tree it hangs in is painted and fed by its host. Main
/// thread only. Always owned by a std::shared_ptr.
class NSView : public std::enable_shared_from_this<NSView> {
  public:
    NSView();
    explicit NSView(NSRect frame);
    virtual ~NSView();
    NSView(const NSView&) = delete;
    NSView& operator=(const NSView&) = delete;

    [[nodiscard]] NSRect frame() const { return frameRect; }
    void setFrame(NSRect frame);
    [[nodiscard]] NSRect bounds() const { return {{0, 0}, frameRect.size}; }
    /// The size the view would like; none for no wish.
    [[nodiscard]] virtual std::optional<NSSize> intrinsicContentSize() const { return std::nullopt; }

    /// Adds on top of the subviews that are there.
    void addSubview(const std::shared_ptr<NSView>& view);
    [[nodiscard]] const std::vector<std::shared_ptr<NSView>>& subviews() const { return children; }
    [[nodiscard]] NSView* superview() const { return parent; }

    [[nodiscard]] double alphaValue() const { return alpha; }
    void setAlphaValue(double value);
    /// Moves the alpha to a value over the duration of the animation group that runs now; a new call
    /// retargets it.
    void animateAlphaValue(double target);

    /// Layer properties; setting wantsLayer has no cost of its own.
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
    /// Asked when another view takes the keyboard. Subclasses call the base.
    virtual bool resignFirstResponder() { return true; }
    [[nodiscard]] virtual bool isFirstResponder() const;

    /// Called when the view's size or place changes: add the cursor rectangles again.
    virtual void resetCursorRects();
    void addCursorRect(NSRect rect, NSCursor cursor);

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

    /// Present content of the view, as assistive software reads it; empty for none. It and the tool tip are
    /// read again after setNeedsDisplay().
    std::string accessibilityValue;
    std::string toolTip;

    /// The toolkit's widget that fills this view, or nullptr; it stays the view's. Asked of a window's
    /// content view: its native window then shows the widget, with corners cut at the view's
    /// layer().cornerRadius.
    [[nodiscard]] virtual QWidget* hostedWidget() { return nullptr; }

    /// Makes this view (nullptr: none) the one in its tree that gets the keyboard. Does nothing outside a
    /// window.
    void makeFirstResponder(NSView* view);

  protected:
    /// The tree that shows this view, if any.
    [[nodiscard]] ViewTree* tree() const;

  private:
    friend class ViewTree;
    friend struct NSLayoutConstraint;

    NSLayoutAnchor anchor(NSLayoutAttribute attribute) { return {weak_from_this(), attribute}; }
    void layoutSubviews();
    void resolveConstraints(NSSize container);
    void refreshCursorRects();

    NSRect frameRect;
    NSView* parent = nullptr;
    ViewTree* hostTree = nullptr; ///< Of a root view: the tree that shows it.
    std::vector<std::shared_ptr<NSView>> children;
    double alpha = 1;
    CALayer properties;
    std::vector<std::shared_ptr<NSTrackingArea>> areas;
    std::vector<std::pair<NSRect, NSCursor>> cursorRects;
    std::vector<NSLayoutConstraint> constraints;
    std::unique_ptr<AlphaAnimation> animation;
};

} // namespace mirrolet::platform
