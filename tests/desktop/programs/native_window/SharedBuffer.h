#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <wayland-client.h>

/// A picture in memory that the compositor reads. Pixels are 0xXXRRGGBB.
class SharedBuffer {
  public:
    SharedBuffer(wl_shm* memory, int width, int height);
    ~SharedBuffer();
    SharedBuffer(const SharedBuffer&) = delete;
    SharedBuffer& operator=(const SharedBuffer&) = delete;

    [[nodiscard]] int width() const { return columns; }
    [[nodiscard]] int height() const { return rows; }
    /// Returns whether the buffer may be painted, which is not so while the compositor reads the buffer.
    [[nodiscard]] bool isFree() const { return !inUse; }
    [[nodiscard]] std::span<std::uint32_t> row(int y) const;
    /// Attaches the buffer to the surface and commits the surface. The buffer is not free until the
    /// compositor releases it.
    void showOn(wl_surface* surface);

  private:
    int columns;
    int rows;
    std::size_t bytes;
    std::uint32_t* pixels = nullptr;
    wl_buffer* buffer = nullptr;
    bool inUse = false;
};
