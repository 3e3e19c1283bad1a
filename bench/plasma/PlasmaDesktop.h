#pragma once

#include "bench/plasma/WindowStream.h"
#include "tests/desktop/harness/Keyboard.h"
#include "tests/desktop/harness/Pointer.h"
#include "tests/desktop/harness/Program.h"
#include "tests/desktop/harness/WindowFacts.h"
#include "tests/desktop/harness/plasma/KWinInput.h"
#include "tests/desktop/harness/plasma/NativeWindow.h"
#include "tests/desktop/harness/plasma/PlasmaSession.h"

#include <chrono>
#include <memory>
#include <optional>

namespace mirrolet::bench {

/// Holds processor times in milliseconds a second.
struct Cost {
    double program = 0;
    double compositor = 0; ///< The cost of KWin.
    double server = 0;     ///< The cost of XWayland.

    [[nodiscard]] double total() const { return program + compositor + server; }
    /// Returns this cost without the cost of the desktop alone.
    [[nodiscard]] Cost above(const Cost& alone) const {
        return {program - alone.program, compositor - alone.compositor, server - alone.server};
    }
};

/// Starts a Plasma session with one native window of 1280 x 800 that looks like a video call, and mirrors the
/// window. A function throws HarnessError if its action has no effect.
class PlasmaDesktop {
  public:
    /// `framesPerSecond` is 0 for a window that stands still.
    explicit PlasmaDesktop(int framesPerSecond);

    /// Starts Mirrolet, answers its prompt, and gives the mirror 320 x 200 pixels.
    std::unique_ptr<harness::Program> mirror();
    void end(harness::Program& program) const;
    /// Lets GStreamer show the stream that KWin makes of the window, in 320 x 200 pixels.
    std::unique_ptr<harness::ChildProcess> mirrorWithGStreamer();

    /// Waits a second, because the start of a program is not measured. Then measures for the given time.
    /// `program` is 0 if no program mirrors the window.
    [[nodiscard]] Cost costDuring(std::chrono::seconds time, pid_t program) const;
    [[nodiscard]] double peakMemoryOf(pid_t program) const;
    /// Counts for two seconds how often the picture of the window changes.
    [[nodiscard]] double framesPerSecond(xcb_window_t small) const;
    [[nodiscard]] xcb_window_t panelOf(const harness::Program& program) const;
    /// Waits for GStreamer's window, and returns it.
    [[nodiscard]] xcb_window_t windowOfGStreamer() const;
    /// Tells the window several times to show another colour. Returns the median time in milliseconds until
    /// the mirror shows the colour.
    [[nodiscard]] double latency(const harness::Program& program) const;

  private:
    [[nodiscard]] Cost usedSoFar(pid_t program) const;
    [[nodiscard]] pid_t xwayland() const;
    void resize(xcb_window_t panel);

    harness::PlasmaSession session{{.width = 1700, .height = 1100}};
    harness::XClient client{session};
    harness::WindowFacts facts{client};
    std::shared_ptr<harness::KWinInput> input = std::make_shared<harness::KWinInput>(session);
    harness::Keyboard keyboard{input};
    harness::Pointer pointer{input};
    harness::NativeWindow window;
    std::optional<WindowStream> stream;
};

} // namespace mirrolet::bench
