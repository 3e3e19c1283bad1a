#pragma once

#include "pip/FrameDelivery.h"
#include "pip/PiPPanel.h"
#include "platform/coregraphics/CGImage.h"
#include "platform/coregraphics/CGWindowList.h"
#include "platform/dispatch/DispatchQueue.h"
#include "platform/dispatch/DispatchSourceTimer.h"
#include "settings/PiPCorner.h"

#include <functional>
#include <memory>

namespace mirrolet {

/// One picture-in-picture session. Mirrors one window of another application into a panel, fifteen times a
/// second, until the session is stopped or the window is gone. Used on the main thread; only the capture tick
/// runs on the capture queue. The owner calls stop() before releasing the session.
class PiPController : public std::enable_shared_from_this<PiPController> {
  public:
    explicit PiPController(platform::CGWindowID windowID);
    PiPController(const PiPController&) = delete;
    PiPController& operator=(const PiPController&) = delete;

    /// Shows the panel and begins to capture. Does nothing while the session runs.
    void start();
    /// Ends the session without calling onClose. Does nothing while the session does not run.
    void stop();

    /// Returns the rectangle in which a new panel is shown, in screen coordinates.
    [[nodiscard]] static platform::NSRect initialFrame(PiPCorner corner);

    /// Called once, when the window can no longer be captured.
    std::function<void()> onClose;
    const platform::CGWindowID windowID;
    std::shared_ptr<PiPPanel> panel; ///< The mirror panel of the running session; nullptr otherwise.
    bool isRunning() const { return running; }

  private:
    void showPanel();
    void startTimer();
    bool captureFrame(FrameDelivery& delivery);
    void deliver(const platform::CGImageRef& image);
    void handleCaptureFailure();

    std::shared_ptr<platform::DispatchSourceTimer> timer;
    platform::DispatchQueue captureQueue;
    bool running = false;
};

} // namespace mirrolet
