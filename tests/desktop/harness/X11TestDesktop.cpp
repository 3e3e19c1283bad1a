#include "tests/desktop/harness/X11TestDesktop.h"

#include "tests/desktop/harness/CallWindow.h"
#include "tests/desktop/harness/Keyboard.h"
#include "tests/desktop/harness/XInput.h"

namespace mirrolet::harness {

namespace {

/// Returns `installed` for the window managers that start their settings service through the session bus.
SessionBus::Services servicesFor(WindowManagerKind kind) {
    return kind == WindowManagerKind::xfwm4 || kind > WindowManagerKind::icewm
               ? SessionBus::Services::installed
               : SessionBus::Services::none;
}

class XSourceWindow : public SourceWindow {
  public:
    XSourceWindow(const XDisplay& display, XClient& client, const CallWindow::Options& options)
        : window(display, options), facts(client), commands(client) {}

    void tell(const std::string& command) const override { window.tell(command); }
    [[nodiscard]] std::vector<std::string> keys() const override { return window.keys(); }
    [[nodiscard]] bool hasFocus() const override { return facts.focus() == window.window(); }
    [[nodiscard]] bool isMinimized() const override {
        return facts.hasState(window.window(), "_NET_WM_STATE_HIDDEN");
    }
    void activate() const override { commands.activate(window.window()); }
    void minimize() const override { commands.minimize(window.window()); }
    void close() const override { commands.close(window.window()); }
    void kill() override { window.kill(); }

  private:
    CallWindow window;
    WindowFacts facts;
    mutable WindowCommands commands;
};

} // namespace

X11TestDesktop::X11TestDesktop(WindowManagerKind kind, const XServer::Options& screen)
    : server(screen), sessionBus(servicesFor(kind), server.with({})),
      manager(std::make_unique<WindowManager>(server, kind, &sessionBus)) {
    commands.setDesktopCount(2);
}

std::shared_ptr<InputDevice> X11TestDesktop::input() {
    return std::make_shared<XInput>(client);
}

std::unique_ptr<SourceWindow> X11TestDesktop::show(const SourceWindow::Options& options) {
    CallWindow::Options own{.title = options.title, .wmClass = options.application, .rate = options.rate};
    own.place = {60, 80, options.width, options.height};
    own.colour = options.colours;
    if (options.fullScreen)
        own.states = {"_NET_WM_STATE_FULLSCREEN"};
    auto window = std::make_unique<XSourceWindow>(server, client, own);
    window->activate();
    return window;
}

void X11TestDesktop::switchToDesktop(int index) {
    const auto wanted = static_cast<std::uint32_t>(index);
    commands.switchToDesktop(wanted);
    require("the desktop is shown",
            [&] { return facts.numbers(client.root(), "_NET_CURRENT_DESKTOP") == std::vector{wanted}; });
}

bool X11TestDesktop::hasShortcuts() const {
    return isKeyGrabbed(client, key::f, XCB_MOD_MASK_4 | XCB_MOD_MASK_1);
}

} // namespace mirrolet::harness
