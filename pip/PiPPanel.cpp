#include "pip/PiPPanel.h"

#include "platform/appkit/NSAnimationContext.h"

#include <algorithm>

namespace mirrolet {

using namespace platform;

namespace {

constexpr CGFloat cornerRadius = 10;
constexpr CGFloat closeButtonSide = 20;
constexpr CGFloat closeButtonInset = 8;
constexpr CGFloat resizeHandleSide = 24;
constexpr CGFloat smallestSide = 50;
constexpr double hoverFadeSeconds = 0.15;

} // namespace

std::shared_ptr<PiPPanel> PiPPanel::make(NSRect contentRect) {
    std::shared_ptr<PiPPanel> panel(new PiPPanel(contentRect));
    // The constructor cannot call setUpViews(), because weak_from_this() works only once a shared_ptr owns
    // the panel.
    panel->setUpViews();
    return panel;
}

PiPPanel::PiPPanel(NSRect contentRect)
    : NSPanel(contentRect, NSWindowStyleMask::nonactivatingPanel), imageView(std::make_shared<NSImageView>()),
      resizeHandle(std::make_shared<PiPResizeHandleView>()),
      closeButton(
          std::make_shared<NSButton>(NSRect{{closeButtonInset, 0}, {closeButtonSide, closeButtonSide}})) {
    isFloatingPanel = true;
    setLevel(NSWindowLevel::floating);
    collectionBehavior = NSWindowCollectionBehavior::canJoinAllSpaces |
                         NSWindowCollectionBehavior::stationary |
                         NSWindowCollectionBehavior::fullScreenAuxiliary;
    isMovableByWindowBackground = false;
    hasShadow = true;
    isOpaque = false;
    backgroundColor = NSColor::clear();
    isReleasedWhenClosed = false;
}

std::weak_ptr<PiPPanel> PiPPanel::weakSelf() {
    return std::static_pointer_cast<PiPPanel>(shared_from_this());
}

void PiPPanel::setUpViews() {
    const auto container = std::make_shared<PiPContainerView>();
    container->setLayer({.cornerRadius = cornerRadius,
                         .masksToBounds = true,
                         .borderWidth = 1,
                         .borderColor = NSColor::white().withAlphaComponent(0.25),
                         .backgroundColor = NSColor::black()});

    imageView->imageScaling = NSImageScaling::proportionallyUpOrDown;
    container->addSubview(imageView);
    NSLayoutConstraint::activate({imageView->leadingAnchor().constraintEqualTo(container->leadingAnchor()),
                                  imageView->trailingAnchor().constraintEqualTo(container->trailingAnchor()),
                                  imageView->topAnchor().constraintEqualTo(container->topAnchor()),
                                  imageView->bottomAnchor().constraintEqualTo(container->bottomAnchor())});

    setUpCloseButton();
    container->addSubview(closeButton);

    container->addSubview(resizeHandle);
    NSLayoutConstraint::activate(
        {resizeHandle->trailingAnchor().constraintEqualTo(container->trailingAnchor()),
         resizeHandle->bottomAnchor().constraintEqualTo(container->bottomAnchor()),
         resizeHandle->widthAnchor().constraintEqualToConstant(resizeHandleSide),
         resizeHandle->heightAnchor().constraintEqualToConstant(resizeHandleSide)});
    resizeHandle->onResizeDrag = [weak = weakSelf()](CGFloat dx, CGFloat dy) {
        if (const auto panel = weak.lock())
            panel->resize(dx, dy);
    };

    setContentView(container);
    setUpMoving(*container);
    layOutControls();
}

void PiPPanel::setUpCloseButton() {
    closeButton->setLayer({.cornerRadius = closeButtonSide / 2, .backgroundColor = NSColor::systemRed()});
    closeButton->setImage(NSImage::systemSymbol("xmark", "Close"));
    closeButton->imagePosition = NSCellImagePosition::imageOnly;
    closeButton->contentTintColor = NSColor::white();
    closeButton->action = [weak = weakSelf()] {
        if (const auto panel = weak.lock())
            panel->closeButtonTapped();
    };
    closeButton->setAlphaValue(0);
}

void PiPPanel::setUpMoving(PiPContainerView& container) {
    const auto step = [weak = weakSelf()](void (PiPPanel::*run)()) {
        return [weak, run](const NSEvent& /*event*/) {
            if (const auto panel = weak.lock())
                (*panel.*run)();
        };
    };
    container.onMouseDown = step(&PiPPanel::beginMove);
    container.onMouseDragged = step(&PiPPanel::continueMove);
    container.onMouseUp = step(&PiPPanel::endMove);
}

void PiPPanel::beginMove() {
    dragOrigin = NSEvent::mouseLocation();
    windowOriginAtDragStart = frame().origin;
}

void PiPPanel::continueMove() {
    if (!dragOrigin || !windowOriginAtDragStart)
        return;
    const NSPoint now = NSEvent::mouseLocation();
    setFrameOrigin({windowOriginAtDragStart->x + now.x - dragOrigin->x,
                    windowOriginAtDragStart->y + now.y - dragOrigin->y});
}

void PiPPanel::endMove() {
    dragOrigin.reset();
    windowOriginAtDragStart.reset();
}

void PiPPanel::setFrame(NSRect frame, bool display) {
    NSPanel::setFrame(frame, display);
    layOutControls();
}

void PiPPanel::resize(CGFloat dx, CGFloat dy) {
    const NSRect before = frame();
    const CGFloat width = std::max(before.width() + dx, smallestSide);
    const CGFloat height = std::max(before.height() - dy, smallestSide); // Dragging down makes dy negative.
    // The top-left corner keeps its place.
    NSPanel::setFrame({{before.minX(), before.maxY() - height}, {width, height}}, true);
    layOutControls();
}

void PiPPanel::layOutControls() {
    const auto content = contentView();
    if (!content)
        return;
    const CGFloat top = content->frame().height();
    closeButton->setFrame(
        {{closeButtonInset, top - closeButtonSide - closeButtonInset}, {closeButtonSide, closeButtonSide}});
    if (hoverTrackingArea)
        content->removeTrackingArea(hoverTrackingArea);
    using namespace NSTrackingAreaOptions;
    hoverTrackingArea = std::make_shared<NSTrackingArea>(
        NSTrackingArea{content->bounds(), mouseEnteredAndExited | activeAlways | inVisibleRect, weakSelf()});
    content->addTrackingArea(hoverTrackingArea);
}

void PiPPanel::mouseEntered(const NSEvent& /*event*/) {
    fadeCloseButton(1);
}

void PiPPanel::mouseExited(const NSEvent& /*event*/) {
    fadeCloseButton(0);
}

void PiPPanel::fadeCloseButton(double alpha) {
    NSAnimationContext::runAnimationGroup(hoverFadeSeconds, [&] { closeButton->animateAlphaValue(alpha); });
}

void PiPPanel::closeButtonTapped() {
    if (onCloseRequested)
        onCloseRequested();
}

} // namespace mirrolet
