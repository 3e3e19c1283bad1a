#pragma once

#include "tests/desktop/harness/ChildProcess.h"
#include "tests/desktop/harness/SessionBus.h"
#include "tests/desktop/harness/XDisplay.h"
#include "tests/desktop/harness/plasma/PipeWire.h"

#include <memory>
#include <optional>
#include <string>

namespace mirrolet::harness {

/// Runs a Plasma session on Wayland without a screen: KWin with XWayland, a session bus and PipeWire. KWin
/// also provides kglobalaccel, Plasma's service for global shortcuts. The constructor waits until X clients
/// and Wayland clients can connect.
class PlasmaSession : public XDisplay {
  public:
    struct Options {
        int width = 1280;
        int height = 800;
        /// Whether KWin offers its own protocols only to programs whose desktop entry asks for them, as it
        /// does outside of tests. The session writes such an entry for the test program.
        bool checksPermissions = false;
        PipeWire::SessionManager sessionManager = PipeWire::SessionManager::wirePlumber;
        bool titleBars = false;             ///< Whether KWin draws title bars.
        std::string kwinSettings = {};      ///< More lines for KWin's settings file.
        std::string keyboardLayouts = "us"; ///< Such as "us,ru". The first one is active.
    };

    PlasmaSession();
    explicit PlasmaSession(const Options& options);
    ~PlasmaSession() override;

    [[nodiscard]] Environment with(Environment environment) const override;
    [[nodiscard]] const SessionBus& bus() const { return sessionBus; }
    [[nodiscard]] PipeWire& pipeWire() { return *streams; }
    /// Returns the absolute path of the compositor's socket.
    [[nodiscard]] std::string waylandSocket() const;
    /// Returns the process of KWin, or 0 while it is being restarted.
    [[nodiscard]] pid_t compositor() const;
    [[nodiscard]] std::string compositorLog() const;

    /// Returns KWin's generation: 5 on Debian 12, 6 on later releases.
    [[nodiscard]] static int generation();

    /// Writes the desktop entry `id`. KWin learns of the entry only when a program updates KDE's database
    /// afterwards.
    void writeEntry(const std::string& id, const std::string& entry) const;
    /// Kills KWin, which ends XWayland too, and waits until both have started again. All clients lose their
    /// connection at once. The names of both displays stay the same.
    void crashCompositor();

  private:
    [[nodiscard]] Environment ownEnvironment() const;
    void writeSettings() const;
    void updateDatabase() const;
    void start();
    void awaitDisplay();

    Options options;
    Sandbox sandbox;
    SessionBus sessionBus;
    std::optional<PipeWire> streams;
    std::unique_ptr<ChildProcess> process;
    std::string authority;
};

} // namespace mirrolet::harness
