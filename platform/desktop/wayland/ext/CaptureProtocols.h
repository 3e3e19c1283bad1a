#pragma once

#include "platform/desktop/Pixels.h"
#include "platform/desktop/wayland/session/WaylandConnection.h"

#include <cstdint>
#include <memory>

struct ext_foreign_toplevel_handle_v1;
struct ext_foreign_toplevel_image_capture_source_manager_v1;
struct ext_image_capture_source_v1;
struct ext_image_copy_capture_manager_v1;
struct ext_image_copy_capture_session_v1;

namespace mirrolet::platform::desktop::wayland {

/// Returns whether the compositor lists windows and lets clients capture them, by the standard protocols.
bool offersToplevelCapture(const WaylandConnection& connection);

/// Holds the globals with which windows are captured. All functions are for the connection's thread.
class CaptureProtocols {
  public:
    /// To be made before the connection starts. offersToplevelCapture() must be true for the connection.
    explicit CaptureProtocols(WaylandConnection& connection);
    /// To be destroyed after the connection has ended, and after all sessions.
    ~CaptureProtocols();
    CaptureProtocols(const CaptureProtocols&) = delete;
    CaptureProtocols& operator=(const CaptureProtocols&) = delete;

    [[nodiscard]] wl_shm* memory() const { return shm; }

  private:
    friend class CaptureSession;

    wl_shm* const shm;
    ext_foreign_toplevel_image_capture_source_manager_v1* const sources;
    ext_image_copy_capture_manager_v1* const captures;
};

/// A capture session of one window. Tells what the compositor says of frames. Derived classes act on it.
class CaptureSession {
  public:
    CaptureSession(const CaptureProtocols& protocols, ext_foreign_toplevel_handle_v1* window);
    virtual ~CaptureSession();
    CaptureSession(const CaptureSession&) = delete;
    CaptureSession& operator=(const CaptureSession&) = delete;

  protected:
    [[nodiscard]] ext_image_copy_capture_session_v1* proxy() const { return session; }
    virtual void bufferSize(PixelSize size) = 0;
    virtual void shmFormat(std::uint32_t format) = 0;
    /// The size and the formats are complete. A derived class may destroy this object here and in stopped().
    virtual void constraintsDone() = 0;
    virtual void stopped() = 0;

  private:
    ext_image_capture_source_v1* const source;
    ext_image_copy_capture_session_v1* const session;
};

} // namespace mirrolet::platform::desktop::wayland
