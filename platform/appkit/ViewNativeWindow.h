#pragma once

#include <QVariant>
#include <QWindow>

namespace mirrolet::platform {

class ViewTree;

/// A native window that passes pointer events to a tree of views.
class ViewNativeWindow final : public QWindow {
  public:
    /// Owns the native window, draws into it and places it. Is told when the window is exposed, resized or
    /// moved.
    class Owner {
      public:
        virtual ~Owner() = default;
        virtual void exposed() = 0;
        virtual void resized() = 0;
        /// Called when the window has moved, and when a drag has ended during which moves were not taken
        /// over.
        virtual void relocated() = 0;
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
