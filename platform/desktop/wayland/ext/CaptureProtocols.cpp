#include "platform/desktop/wayland/ext/CaptureProtocols.h"

#include <algorithm>
#include <ext-foreign-toplevel-list-v1-client-protocol.h>
#include <ext-image-capture-source-v1-client-protocol.h>
#include <ext-image-copy-capture-v1-client-protocol.h>
#include <limits>

namespace mirrolet::platform::desktop::wayland {

namespace {

int length(std::uint32_t pixels) {
    return static_cast<int>(std::min<std::uint32_t>(pixels, std::numeric_limits<std::int32_t>::max()));
}

} // namespace

bool offersToplevelCapture(const WaylandConnection& connection) {
    return connection.offers(ext_foreign_toplevel_list_v1_interface) &&
           connection.offers(ext_foreign_toplevel_image_capture_source_manager_v1_interface) &&
           connection.offers(ext_image_copy_capture_manager_v1_interface) &&
           connection.offers(wl_shm_interface);
}

CaptureProtocols::CaptureProtocols(WaylandConnection& connection)
    : shm(connection.bind<wl_shm>(wl_shm_interface, 1)),
      sources(connection.bind<ext_foreign_toplevel_image_capture_source_manager_v1>(
          ext_foreign_toplevel_image_capture_source_manager_v1_interface, 1)),
      captures(connection.bind<ext_image_copy_capture_manager_v1>(ext_image_copy_capture_manager_v1_interface,
                                                                  1)) {}

CaptureProtocols::~CaptureProtocols() {
    ext_image_copy_capture_manager_v1_destroy(captures);
    ext_foreign_toplevel_image_capture_source_manager_v1_destroy(sources);
    wl_shm_destroy(shm);
}

CaptureSession::CaptureSession(const CaptureProtocols& protocols, ext_foreign_toplevel_handle_v1* window)
    : source(ext_foreign_toplevel_image_capture_source_manager_v1_create_source(protocols.sources, window)),
      session(ext_image_copy_capture_manager_v1_create_session(protocols.captures, source, 0)) {
    using Session = ext_image_copy_capture_session_v1;
    static const ext_image_copy_capture_session_v1_listener listener = [] {
        ext_image_copy_capture_session_v1_listener events{};
        events.buffer_size = [](void* self, Session*, std::uint32_t width, std::uint32_t height) {
            static_cast<CaptureSession*>(self)->bufferSize({length(width), length(height)});
        };
        events.shm_format = [](void* self, Session*, std::uint32_t format) {
            static_cast<CaptureSession*>(self)->shmFormat(format);
        };
        // Buffers in graphics memory are not used.
        events.dmabuf_device = [](void*, Session*, wl_array*) {};
        events.dmabuf_format = [](void*, Session*, std::uint32_t, wl_array*) {};
        events.done = [](void* self, Session*) { static_cast<CaptureSession*>(self)->constraintsDone(); };
        events.stopped = [](void* self, Session*) { static_cast<CaptureSession*>(self)->stopped(); };
        return events;
    }();
    ext_image_copy_capture_session_v1_add_listener(session, &listener, this);
}

CaptureSession::~CaptureSession() {
    ext_image_copy_capture_session_v1_destroy(session);
    ext_image_capture_source_v1_destroy(source);
}

} // namespace mirrolet::platform::desktop::wayland
