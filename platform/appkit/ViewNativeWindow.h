#pragma once

#include <QVariant>
#include <QWindow>

namespace mirrolet::platform {

class ViewTree;

/// A native window that passes pointer events to a tree of views.
class ViewNativeWindow final : public QWindow {
  public:
    /// The object that owns the native window, draws into it and places it. Its functions are called when the
    /// window was exposed, resized, moved or pressed.
    class Owner {
      public:
        virtual ~Owner() = default;
        virtual void exposed() = 0;
        virtual void resized() = 0;
        /// Called when the window has moved. Also called at the end of a drag, because an owner may ignore
        /// moves during a drag.
        virtual void relocated() = 0;
        /// Called before the views hear of a press of the left mouse button.
        virtual void pressed() = 0;
    };

    /// Makes a window. `tree` and `owner` must outlive the window.
    ViewNativeWindow(ViewTree& tree, Owner& owner);

  protected:
    bool event(QEvent* event) override;
    void exposeEvent(QExposeEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

  private:
    ViewTree& tree;
    Owner& owner;
};

} // namespace mirrolet::platform
