#pragma once

#include <QVariant>
#include <QWindow>

namespace mirrolet::platform {

class ViewTree;

/// A native window that feeds a tree of views with the pointer.
class ViewNativeWindow final : public QWindow {
  public:
    /// The part that draws and places the window.
    class Owner {
      public:
        virtual ~Owner() = default;
        virtual void exposed() = 0;
        virtual void resized() = 0;
        /// The window has moved, or a drag over which moves were not taken over has ended.
        virtual void relocated() = 0;
    };

    /// Both outlive the window.
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
