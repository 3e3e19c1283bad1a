#pragma once

#include "tests/desktop/harness/TestDesktop.h"
#include "tests/desktop/harness/WindowCommands.h"
#include "tests/desktop/harness/WindowManager.h"
#include "tests/desktop/harness/XServer.h"

namespace mirrolet::harness {

/// Runs an X server with a window manager and a session bus. A test of X11 alone may use the parts directly.
class X11TestDesktop : public TestDesktop {
  public:
    explicit X11TestDesktop(WindowManagerKind kind = WindowManagerKind::openbox,
                            const XServer::Options& screen = {});

    [[nodiscard]] const XDisplay& display() const override { return server; }
    [[nodiscard]] const SessionBus& bus() const override { return sessionBus; }
    [[nodiscard]] std::shared_ptr<InputDevice> input() override;
    [[nodiscard]] Picture screenshot(const Box& box) const override { return facts.screenshot(box); }
    std::unique_ptr<SourceWindow> show(const SourceWindow::Options& options) override;
    void switchToDesktop(int index) override;
    [[nodiscard]] bool hasShortcuts() const override;
    [[nodiscard]] bool capturesHiddenWindows() const override { return false; }

    XServer server;
    SessionBus sessionBus;
    std::unique_ptr<WindowManager> manager;

  private:
    mutable XClient client{server};
    WindowFacts facts{client};
    WindowCommands commands{client};
};

} // namespace mirrolet::harness
