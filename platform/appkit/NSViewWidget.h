#pragma once

#include "platform/appkit/ViewTree.h"

#include <QWidget>

#include <memory>

namespace mirrolet::platform {

/// A Qt widget that shows one tree of views and passes pointer and key events to the views. When a view
/// becomes first responder (the view that gets the keys), the widget takes the focus. When the widget loses
/// the focus, the view stops being first responder. The same happens after a press elsewhere in the window.
class NSViewWidget : public QWidget, private ViewTree::Host {
  public:
    explicit NSViewWidget(std::shared_ptr<NSView> view, QWidget* parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  protected:
    /// Called when a view asks to be drawn again.
    virtual void viewChanged() { update(); }
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

  private:
    void contentChanged() override { viewChanged(); }
    void pictureChanged() override { viewChanged(); }
    void setCursor(NSCursor cursor) override;
    void firstResponderChanged(bool exists) override;

    std::shared_ptr<NSView> view;
    ViewTree tree;
};

} // namespace mirrolet::platform
