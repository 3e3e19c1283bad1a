#pragma once

#include "platform/desktop/Pixels.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <spa/pod/builder.h>
#include <vector>

namespace mirrolet::platform::desktop::wayland {

/// Builds the parameters with which a stream asks for frames. The parameters live as long as this object.
class StreamParameters {
  public:
    StreamParameters();
    StreamParameters(const StreamParameters&) = delete;
    StreamParameters& operator=(const StreamParameters&) = delete;

    /// Returns the formats that this program can show: 32 bits a pixel with blue first, in any size. A stream
    /// needs them to connect.
    const spa_pod* formats();
    /// Returns the requirements for the buffers: memory that can be shared by its descriptor, and the
    /// metadata that is read with each frame. A stream needs them once the format is known.
    std::vector<const spa_pod*> buffers();

  private:
    template <typename... Fields>
    const spa_pod* object(std::uint32_t type, std::uint32_t id, Fields... fields);
    const spa_pod* metadata(std::uint32_t type, std::size_t size);

    std::array<std::uint8_t, 2048> memory{};
    spa_pod_builder builder;
};

/// Returns the frame size of a format that a stream has settled on. Returns none if the format cannot be
/// shown.
std::optional<PixelSize> frameSizeOf(const spa_pod* format);

} // namespace mirrolet::platform::desktop::wayland
