#include "tests/desktop/programs/native_window/SharedBuffer.h"

#include <cstdlib>
#include <iostream>
#include <limits>
#include <sys/mman.h>
#include <unistd.h>

SharedBuffer::SharedBuffer(wl_shm* memory, int width, int height)
    : columns(width), rows(height),
      bytes(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * sizeof(std::uint32_t)) {
    const int file = memfd_create("picture", MFD_CLOEXEC);
    void* mapped = MAP_FAILED;
    if (file >= 0 && ftruncate(file, static_cast<off_t>(bytes)) == 0)
        mapped = mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
    if (mapped == MAP_FAILED) {
        std::cerr << "native_window: no shared memory" << std::endl;
        std::exit(1);
    }
    pixels = static_cast<std::uint32_t*>(mapped);
    wl_shm_pool* pool = wl_shm_create_pool(memory, file, static_cast<std::int32_t>(bytes));
    close(file);
    const int stride = width * static_cast<int>(sizeof(std::uint32_t));
    buffer = wl_shm_pool_create_buffer(pool, 0, width, height, stride, WL_SHM_FORMAT_XRGB8888);
    wl_shm_pool_destroy(pool);
    static const wl_buffer_listener listener{
        [](void* self, wl_buffer*) { static_cast<SharedBuffer*>(self)->inUse = false; }};
    wl_buffer_add_listener(buffer, &listener, this);
}

SharedBuffer::~SharedBuffer() {
    wl_buffer_destroy(buffer);
    munmap(pixels, bytes);
}

std::span<std::uint32_t> SharedBuffer::row(int y) const {
    const auto length = static_cast<std::size_t>(columns);
    return {pixels + static_cast<std::size_t>(y) * length, length};
}

void SharedBuffer::showOn(wl_surface* surface) {
    inUse = true;
    constexpr int all = std::numeric_limits<std::int32_t>::max();
    wl_surface_attach(surface, buffer, 0, 0);
    wl_surface_damage_buffer(surface, 0, 0, all, all);
    wl_surface_commit(surface);
}
