#include "platform/desktop/wayland/pipewire/StreamParameters.h"

#include <spa/buffer/buffer.h>
#include <spa/buffer/meta.h>
#include <spa/param/buffers.h>
#include <spa/param/video/format-utils.h>

namespace mirrolet::platform::desktop::wayland {

namespace {

/// The frame rate to ask for. A sender sends somewhat fewer frames than that, here 14 to 16 a second.
constexpr spa_fraction mostFrames{17, 1};
/// One buffer holds the newest frame, one is being read, and the compositor draws to the others.
constexpr int usualBuffers = 4;
constexpr int fewestBuffers = 2;
constexpr int mostBuffers = 8;

constexpr int damagedRegions(int count) {
    return count * static_cast<int>(sizeof(spa_meta_region));
}

} // namespace

StreamParameters::StreamParameters() {
    spa_pod_builder_init(&builder, memory.data(), static_cast<std::uint32_t>(memory.size()));
}

template <typename... Fields>
const spa_pod* StreamParameters::object(std::uint32_t type, std::uint32_t id, Fields... fields) {
    spa_pod_frame frame;
    spa_pod_builder_push_object(&builder, &frame, type, id);
    spa_pod_builder_add(&builder, fields..., 0);
    return static_cast<const spa_pod*>(spa_pod_builder_pop(&builder, &frame));
}

const spa_pod* StreamParameters::metadata(std::uint32_t type, std::size_t size) {
    return object(SPA_TYPE_OBJECT_ParamMeta, SPA_PARAM_Meta, SPA_PARAM_META_type, SPA_POD_Id(type),
                  SPA_PARAM_META_size, SPA_POD_Int(static_cast<int>(size)));
}

const spa_pod* StreamParameters::formats() {
    const spa_rectangle usual{1280, 800};
    const spa_rectangle smallest{1, 1};
    const spa_rectangle largest{32767, 32767};
    const spa_fraction whenChanged{0, 1};
    const spa_fraction fewestFrames{1, 1};
    return object(
        SPA_TYPE_OBJECT_Format, SPA_PARAM_EnumFormat, SPA_FORMAT_mediaType, SPA_POD_Id(SPA_MEDIA_TYPE_video),
        SPA_FORMAT_mediaSubtype, SPA_POD_Id(SPA_MEDIA_SUBTYPE_raw), SPA_FORMAT_VIDEO_format,
        SPA_POD_CHOICE_ENUM_Id(3, SPA_VIDEO_FORMAT_BGRx, SPA_VIDEO_FORMAT_BGRx, SPA_VIDEO_FORMAT_BGRA),
        SPA_FORMAT_VIDEO_size, SPA_POD_CHOICE_RANGE_Rectangle(&usual, &smallest, &largest),
        SPA_FORMAT_VIDEO_framerate, SPA_POD_Fraction(&whenChanged), SPA_FORMAT_VIDEO_maxFramerate,
        SPA_POD_CHOICE_RANGE_Fraction(&mostFrames, &fewestFrames, &mostFrames));
}

std::vector<const spa_pod*> StreamParameters::buffers() {
    return {object(SPA_TYPE_OBJECT_ParamBuffers, SPA_PARAM_Buffers, SPA_PARAM_BUFFERS_buffers,
                   SPA_POD_CHOICE_RANGE_Int(usualBuffers, fewestBuffers, mostBuffers),
                   SPA_PARAM_BUFFERS_dataType, SPA_POD_CHOICE_FLAGS_Int(1 << SPA_DATA_MemFd)),
            metadata(SPA_META_Header, sizeof(spa_meta_header)),
            metadata(SPA_META_VideoCrop, sizeof(spa_meta_region)),
            object(SPA_TYPE_OBJECT_ParamMeta, SPA_PARAM_Meta, SPA_PARAM_META_type,
                   SPA_POD_Id(SPA_META_VideoDamage), SPA_PARAM_META_size,
                   SPA_POD_CHOICE_RANGE_Int(damagedRegions(16), damagedRegions(1), damagedRegions(16)))};
}

std::optional<PixelSize> frameSizeOf(const spa_pod* format) {
    spa_video_info_raw info{};
    if (!format || spa_format_video_raw_parse(format, &info) < 0)
        return std::nullopt;
    if (info.format != SPA_VIDEO_FORMAT_BGRx && info.format != SPA_VIDEO_FORMAT_BGRA)
        return std::nullopt;
    return PixelSize{static_cast<int>(info.size.width), static_cast<int>(info.size.height)};
}

} // namespace mirrolet::platform::desktop::wayland
