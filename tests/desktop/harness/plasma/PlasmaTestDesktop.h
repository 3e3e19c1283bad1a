#pragma once

#include "tests/desktop/harness/TestDesktop.h"
#include "tests/desktop/harness/plasma/PlasmaScreen.h"
#include "tests/desktop/harness/plasma/PlasmaSession.h"
#include "tests/desktop/harness/plasma/PlasmaShell.h"
#include "tests/desktop/harness/plasma/PlasmaWindows.h"

namespace mirrolet::harness {

/// Runs a Plasma session on Wayland, where source windows are native.
class PlasmaTestDesktop : public TestDesktop {
  public:
    explicit PlasmaTestDesktop(const PlasmaSession::Options& options = {});

    [[nodiscard]] const XDisplay& display() const override { return session; }
    [[nodiscard]] const SessionBus& bus() const override { return session.bus(); }
    [[nodiscard]] std::shared_ptr<InputDevice> input() override;
    [[nodiscard]] Picture screenshot(const Box& box) const override { return screen.screenshot(box); }
    std::unique_ptr<SourceWindow> show(const SourceWindow::Options& options) override;
    void switchToDesktop(int index) override { shell.switchToDesktop(index); }
    [[nodiscard]] bool hasShortcuts() const override;
    [[nodiscard]] bool capturesHiddenWindows() const override { return true; }

    PlasmaSession session;

  private:
    PlasmaScreen screen{session};
    PlasmaShell shell{session};
    PlasmaWindows windows{session};
};

} // namespace mirrolet::harness
