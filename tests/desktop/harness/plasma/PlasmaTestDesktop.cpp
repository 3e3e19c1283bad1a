#include "tests/desktop/harness/plasma/PlasmaTestDesktop.h"

#include "tests/desktop/harness/plasma/KWinInput.h"
#include "tests/desktop/harness/plasma/NativeWindow.h"

namespace mirrolet::harness {

namespace {

/// Shows a native Wayland window. KWin's list of windows is searched for the window's process.
class NativeSourceWindow : public SourceWindow {
  public:
    NativeSourceWindow(const PlasmaSession& session, PlasmaWindows& windows,
                       const NativeWindow::Options& options)
        : window(session, options), windows(windows), process(window.pid()) {}

    void tell(const std::string& command) const override { window.tell(command); }
    [[nodiscard]] std::vector<std::string> keys() const override { return window.keys(); }
    [[nodiscard]] bool hasFocus() const override { return window.hasFocus(); }
    [[nodiscard]] bool isMinimized() const override { return windows.isMinimized(process); }
    void activate() const override { windows.activate(process); }
    void minimize() const override { windows.minimize(process); }
    void close() const override { windows.close(process); }
    void kill() override { window.kill(); }

  private:
    NativeWindow window;
    PlasmaWindows& windows;
    pid_t process;
};

} // namespace

PlasmaTestDesktop::PlasmaTestDesktop(const PlasmaSession::Options& options) : session(options) {}

std::shared_ptr<InputDevice> PlasmaTestDesktop::input() {
    return std::make_shared<KWinInput>(session);
}

std::unique_ptr<SourceWindow> PlasmaTestDesktop::show(const SourceWindow::Options& options) {
    NativeWindow::Options own{.title = options.title,
                              .applicationId = options.application,
                              .width = options.width,
                              .height = options.height,
                              .colours = options.colours,
                              .rate = options.rate};
    own.fullScreen = options.fullScreen;
    return std::make_unique<NativeSourceWindow>(session, windows, own);
}

bool PlasmaTestDesktop::hasShortcuts() const {
    return shell.hasShortcuts("app.mirrolet.Mirrolet");
}

} // namespace mirrolet::harness
