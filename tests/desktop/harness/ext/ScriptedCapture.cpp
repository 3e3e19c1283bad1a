#include "tests/desktop/harness/ext/ScriptedCapture.h"

#include <cstddef>
#include <ext-image-capture-source-v1-server-protocol.h>
#include <ext-image-copy-capture-v1-server-protocol.h>
#include <utility>
#include <wayland-server.h>

namespace mirrolet::harness {

using platform::desktop::intersection;
using platform::desktop::isEmpty;
using platform::desktop::PixelRect;
using platform::desktop::united;

/// A frame that a client asks for. Lives as long as the client's object.
struct ScriptedFrame {
    ScriptedSession* session = nullptr; ///< nullptr once the session is gone.
    wl_resource* resource = nullptr;
    wl_resource* buffer = nullptr;
    PixelRect damage;
    bool isPending = false;
    bool wasAsked = false;
};

namespace {

void destroyResource(wl_client*, wl_resource* resource) {
    wl_resource_destroy(resource);
}

template <typename T> T& dataOf(wl_resource* resource) {
    return *static_cast<T*>(wl_resource_get_user_data(resource));
}

/// Copies a part of the window's picture into the buffer, which has the same size.
void copy(const Picture& picture, const PixelRect& part, wl_shm_buffer* buffer) {
    const auto clipped = intersection(part, {0, 0, picture.width, picture.height});
    wl_shm_buffer_begin_access(buffer);
    auto* bytes = static_cast<std::byte*>(wl_shm_buffer_get_data(buffer));
    const auto stride = static_cast<std::size_t>(wl_shm_buffer_get_stride(buffer));
    for (int y = clipped.y; y < clipped.y + clipped.height; ++y) {
        auto* row = reinterpret_cast<std::uint32_t*>(bytes + static_cast<std::size_t>(y) * stride);
        for (int x = clipped.x; x < clipped.x + clipped.width; ++x)
            row[x] = picture.at(x, y);
    }
    wl_shm_buffer_end_access(buffer);
}

void sendFailure(ScriptedFrame& frame, std::uint32_t reason) {
    frame.isPending = false;
    ext_image_copy_capture_frame_v1_send_failed(frame.resource, reason);
}

void sendFrame(ScriptedFrame& frame, wl_shm_buffer* buffer) {
    const auto changed = std::exchange(frame.session->damage, {});
    copy(frame.session->window->picture, united(changed, frame.damage), buffer);
    frame.isPending = false;
    ext_image_copy_capture_frame_v1_send_transform(frame.resource, WL_OUTPUT_TRANSFORM_NORMAL);
    ext_image_copy_capture_frame_v1_send_damage(frame.resource, changed.x, changed.y, changed.width,
                                                changed.height);
    ext_image_copy_capture_frame_v1_send_presentation_time(frame.resource, 0, 0, 0);
    ext_image_copy_capture_frame_v1_send_ready(frame.resource);
}

void attach(wl_client*, wl_resource* resource, wl_resource* buffer) {
    dataOf<ScriptedFrame>(resource).buffer = buffer;
}

void addDamage(wl_client*, wl_resource* resource, std::int32_t x, std::int32_t y, std::int32_t width,
               std::int32_t height) {
    auto& frame = dataOf<ScriptedFrame>(resource);
    if (x < 0 || y < 0 || width <= 0 || height <= 0)
        wl_resource_post_error(resource, EXT_IMAGE_COPY_CAPTURE_FRAME_V1_ERROR_INVALID_BUFFER_DAMAGE,
                               "damage of no area");
    frame.damage = united(frame.damage, {x, y, width, height});
}

void ask(wl_client*, wl_resource* resource) {
    auto& frame = dataOf<ScriptedFrame>(resource);
    if (frame.buffer == nullptr) {
        wl_resource_post_error(resource, EXT_IMAGE_COPY_CAPTURE_FRAME_V1_ERROR_NO_BUFFER, "no buffer");
        return;
    }
    if (std::exchange(frame.wasAsked, true)) {
        wl_resource_post_error(resource, EXT_IMAGE_COPY_CAPTURE_FRAME_V1_ERROR_ALREADY_CAPTURED,
                               "asked twice");
        return;
    }
    frame.isPending = true;
    ++frame.session->window->framesAsked;
    answerPending(*frame.session);
}

void createFrame(wl_client* client, wl_resource* sessionResource, std::uint32_t id) {
    auto& session = dataOf<ScriptedSession>(sessionResource);
    if (session.frame != nullptr) {
        wl_resource_post_error(sessionResource, EXT_IMAGE_COPY_CAPTURE_SESSION_V1_ERROR_DUPLICATE_FRAME,
                               "two frames at a time");
        return;
    }
    static const struct ext_image_copy_capture_frame_v1_interface calls {
        destroyResource, attach, addDamage, ask
    };
    auto* frame = new ScriptedFrame;
    frame->session = &session;
    session.frame = frame;
    frame->resource = wl_resource_create(client, &ext_image_copy_capture_frame_v1_interface, 1, id);
    wl_resource_set_implementation(frame->resource, &calls, frame, [](wl_resource* resource) {
        auto& gone = dataOf<ScriptedFrame>(resource);
        if (gone.session != nullptr)
            gone.session->frame = nullptr;
        delete &gone;
    });
}

void createSession(wl_client* client, wl_resource*, std::uint32_t id, wl_resource* source, std::uint32_t) {
    static const struct ext_image_copy_capture_session_v1_interface calls { createFrame, destroyResource };
    auto& window = dataOf<ScriptedWindow>(source);
    auto* session = new ScriptedSession;
    session->window = &window;
    session->damage = window.whole();
    window.sessions.push_back(session);
    ++window.sessionsOpened;
    session->resource = wl_resource_create(client, &ext_image_copy_capture_session_v1_interface, 1, id);
    wl_resource_set_implementation(session->resource, &calls, session, [](wl_resource* resource) {
        auto& gone = dataOf<ScriptedSession>(resource);
        std::erase(gone.window->sessions, &gone);
        if (gone.frame != nullptr)
            gone.frame->session = nullptr;
        delete &gone;
    });
    if (window.isClosed)
        stopSession(*session);
    else
        sendConstraints(*session);
}

void createSource(wl_client* client, wl_resource*, std::uint32_t id, wl_resource* window) {
    static const struct ext_image_capture_source_v1_interface calls { destroyResource };
    auto* source = wl_resource_create(client, &ext_image_capture_source_v1_interface, 1, id);
    wl_resource_set_implementation(source, &calls, wl_resource_get_user_data(window), nullptr);
}

void bindSources(wl_client* client, void*, std::uint32_t version, std::uint32_t id) {
    static const struct ext_foreign_toplevel_image_capture_source_manager_v1_interface calls {
        createSource, destroyResource
    };
    auto* manager =
        wl_resource_create(client, &ext_foreign_toplevel_image_capture_source_manager_v1_interface,
                           static_cast<int>(version), id);
    wl_resource_set_implementation(manager, &calls, nullptr, nullptr);
}

void bindCaptures(wl_client* client, void*, std::uint32_t version, std::uint32_t id) {
    static const struct ext_image_copy_capture_manager_v1_interface calls {
        createSession,
            [](wl_client*, wl_resource*, std::uint32_t, wl_resource*, wl_resource*) {}, destroyResource
    };
    auto* manager = wl_resource_create(client, &ext_image_copy_capture_manager_v1_interface,
                                       static_cast<int>(version), id);
    wl_resource_set_implementation(manager, &calls, nullptr, nullptr);
}

} // namespace

void addCaptureGlobals(wl_display* display) {
    wl_display_init_shm(display);
    wl_global_create(display, &ext_foreign_toplevel_image_capture_source_manager_v1_interface, 1, nullptr,
                     bindSources);
    wl_global_create(display, &ext_image_copy_capture_manager_v1_interface, 1, nullptr, bindCaptures);
}

void sendConstraints(const ScriptedSession& session) {
    const auto& window = *session.window;
    ext_image_copy_capture_session_v1_send_buffer_size(session.resource,
                                                       static_cast<std::uint32_t>(window.picture.width),
                                                       static_cast<std::uint32_t>(window.picture.height));
    for (const auto format : window.formats)
        ext_image_copy_capture_session_v1_send_shm_format(session.resource, format);
    ext_image_copy_capture_session_v1_send_done(session.resource);
}

void answerPending(ScriptedSession& session) {
    if (session.frame == nullptr || !session.frame->isPending)
        return;
    auto& frame = *session.frame;
    auto& window = *session.window;
    auto* buffer = wl_shm_buffer_get(frame.buffer);
    if (session.isStopped) {
        sendFailure(frame, EXT_IMAGE_COPY_CAPTURE_FRAME_V1_FAILURE_REASON_STOPPED);
    } else if (!window.failures.empty()) {
        const auto reason = window.failures.front();
        window.failures.pop_front();
        sendFailure(frame, reason);
    } else if (wl_shm_buffer_get_width(buffer) != window.picture.width ||
               wl_shm_buffer_get_height(buffer) != window.picture.height) {
        sendFailure(frame, EXT_IMAGE_COPY_CAPTURE_FRAME_V1_FAILURE_REASON_BUFFER_CONSTRAINTS);
    } else if (!isEmpty(session.damage)) {
        sendFrame(frame, buffer);
    }
}

void damage(ScriptedWindow& window, const PixelRect& area) {
    for (auto* session : window.sessions) {
        session->damage = united(session->damage, area);
        answerPending(*session);
    }
}

void stopSession(ScriptedSession& session) {
    if (!std::exchange(session.isStopped, true))
        ext_image_copy_capture_session_v1_send_stopped(session.resource);
}

} // namespace mirrolet::harness
