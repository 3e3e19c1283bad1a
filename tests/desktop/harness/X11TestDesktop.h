#pragma once

#include "tests/desktop/harness/TestDesktop.h"
#include "tests/desktop/harness/WindowCommands.h"
#include "tests/desktop/harness/WindowManager.h"
#include "tests/desktop/harness/XServer.h"

namespace mirrolet::harness {

/// Runs an X server with openbox.
class X11TestDesktop : public TestDesktop {
  public:
    X11TestDesktop();

    [[nodiscard]] const XDisplay& display() const override { return server; }
    [[nodiscard]] const SessionBus& bus() const override { return sessionBus; }
    [[nodiscard]] std::shared_ptr<InputDevice> input() override;
    [[nodiscard]] Picture screenshot(const Box& box) const override { return facts.screenshot(box); }
    std::unique_ptr<SourceWindow> show(const SourceWindow::Options& options) override;
    void switchToDesktop(int index) override;
    [[nodiscard]] bool hasShortcuts() const override;
    [[nodiscard]] bool capturesHiddenWindows() const override { return false; }

  private:
    XServer server;
    SessionBus sessionBus;
    WindowManager manager;
    mutable XClient client{server};
    WindowFacts facts{client};
    WindowCommands commands{client};
};

} // namespace mirrolet::harness
