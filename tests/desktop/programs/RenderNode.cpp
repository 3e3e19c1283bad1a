// A library that the tests load into KWin 6 on a machine without a GPU. There KWin would draw without OpenGL,
// and would not stream windows. The library takes the place of libdrm, libgbm and one function of EGL: it
// shows KWin a made-up render node, keeps buffers in memory, and lets Mesa draw in software.

#include <array>
#include <cstdlib>
#include <drm_fourcc.h>
#include <epoxy/egl.h>
#include <fcntl.h>
#include <filesystem>
#include <gbm.h>
#include <memory>
#include <sys/mman.h>
#include <unistd.h>
#include <xf86drm.h>

struct gbm_device {
    int descriptor;
};

struct gbm_bo {
    ~gbm_bo() {
        if (pixels != MAP_FAILED)
            munmap(pixels, size);
        close(descriptor);
    }

    std::uint32_t width;
    std::uint32_t height;
    std::uint32_t format;
    std::uint32_t stride;
    std::size_t size;
    int descriptor;
    void* pixels = MAP_FAILED;
};

namespace {

/// KWin opens this file as the node, and asks it for nothing.
char nodeFile[] = "/dev/null";

drmDevice* madeUpDevice() {
    static std::array<char*, DRM_NODE_MAX> nodes{};
    static drmPlatformBusInfo bus{};
    static drmPlatformDeviceInfo information{};
    static drmDevice device{};
    nodes[DRM_NODE_PRIMARY] = nodes[DRM_NODE_RENDER] = nodeFile;
    device.nodes = nodes.data();
    device.available_nodes = 1 << DRM_NODE_RENDER;
    device.bustype = DRM_BUS_PLATFORM;
    device.businfo.platform = &bus;
    device.deviceinfo.platform = &information;
    return &device;
}

EGLDisplay softwareDisplay(EGLenum /*platform*/, void* /*device*/, const EGLint* /*attributes*/) {
    const auto open =
        reinterpret_cast<PFNEGLGETPLATFORMDISPLAYEXTPROC>(eglGetProcAddress("eglGetPlatformDisplayEXT"));
    return open(EGL_PLATFORM_SURFACELESS_MESA, EGL_DEFAULT_DISPLAY, nullptr);
}

/// Runs before KWin's main function. Programs that KWin starts do not load the library.
[[gnu::constructor]] void begin() {
    std::error_code unreadable;
    if (std::filesystem::read_symlink("/proc/self/exe", unreadable).filename() != "kwin_wayland")
        return;
    epoxy_eglGetPlatformDisplayEXT = softwareDisplay;
    unsetenv("LD_PRELOAD");
}

} // namespace

extern "C" {

int drmGetDevices2(std::uint32_t /*flags*/, drmDevicePtr devices[], int count) {
    if (devices != nullptr && count > 0)
        devices[0] = madeUpDevice();
    return 1;
}

void drmFreeDevices(drmDevicePtr /*devices*/[], int /*count*/) {}

int drmGetDevice2(int /*descriptor*/, std::uint32_t /*flags*/, drmDevicePtr* device) {
    *device = madeUpDevice();
    return 0;
}

int drmGetDeviceFromDevId(dev_t /*number*/, std::uint32_t /*flags*/, drmDevicePtr* device) {
    *device = madeUpDevice();
    return 0;
}

void drmFreeDevice(drmDevicePtr* /*device*/) {}

int drmDevicesEqual(drmDevicePtr /*one*/, drmDevicePtr /*other*/) {
    return 1;
}

gbm_device* gbm_create_device(int descriptor) {
    return new gbm_device{descriptor};
}

void gbm_device_destroy(gbm_device* device) {
    delete device;
}

int gbm_device_get_fd(gbm_device* device) {
    return device->descriptor;
}

/// Makes a buffer with four bytes a pixel. Mesa maps whole tiles of 4 x 16 pixels.
gbm_bo* gbm_bo_create(gbm_device* /*device*/, std::uint32_t width, std::uint32_t height, std::uint32_t format,
                      std::uint32_t /*use*/) {
    const std::uint32_t stride = (width * 4 + 63) / 64 * 64;
    const std::size_t size = std::size_t{stride} * ((height + 3) / 4 * 4);
    const int descriptor = memfd_create("buffer", MFD_CLOEXEC);
    auto buffer = std::unique_ptr<gbm_bo>(new gbm_bo{width, height, format, stride, size, descriptor});
    if (descriptor < 0 || ftruncate(descriptor, static_cast<off_t>(size)) != 0)
        return nullptr;
    return buffer.release();
}

gbm_bo* gbm_bo_create_with_modifiers(gbm_device* device, std::uint32_t width, std::uint32_t height,
                                     std::uint32_t format, const std::uint64_t* /*modifiers*/,
                                     unsigned /*count*/) {
    return gbm_bo_create(device, width, height, format, 0);
}

void gbm_bo_destroy(gbm_bo* buffer) {
    delete buffer;
}

int gbm_bo_get_plane_count(gbm_bo* /*buffer*/) {
    return 1;
}

std::uint32_t gbm_bo_get_width(gbm_bo* buffer) {
    return buffer->width;
}

std::uint32_t gbm_bo_get_height(gbm_bo* buffer) {
    return buffer->height;
}

std::uint32_t gbm_bo_get_format(gbm_bo* buffer) {
    return buffer->format;
}

std::uint64_t gbm_bo_get_modifier(gbm_bo* /*buffer*/) {
    return DRM_FORMAT_MOD_LINEAR;
}

int gbm_bo_get_fd_for_plane(gbm_bo* buffer, int /*plane*/) {
    return fcntl(buffer->descriptor, F_DUPFD_CLOEXEC, 3);
}

std::uint32_t gbm_bo_get_offset(gbm_bo* /*buffer*/, int /*plane*/) {
    return 0;
}

std::uint32_t gbm_bo_get_stride_for_plane(gbm_bo* buffer, int /*plane*/) {
    return buffer->stride;
}

void* gbm_bo_map(gbm_bo* buffer, std::uint32_t x, std::uint32_t y, std::uint32_t /*width*/,
                 std::uint32_t /*height*/, std::uint32_t /*use*/, std::uint32_t* stride, void** mapping) {
    if (buffer->pixels == MAP_FAILED)
        buffer->pixels =
            mmap(nullptr, buffer->size, PROT_READ | PROT_WRITE, MAP_SHARED, buffer->descriptor, 0);
    if (buffer->pixels == MAP_FAILED)
        return nullptr;
    *stride = buffer->stride;
    *mapping = buffer;
    return static_cast<char*>(buffer->pixels) + std::size_t{y} * buffer->stride + std::size_t{x} * 4;
}

void gbm_bo_unmap(gbm_bo* /*buffer*/, void* /*mapping*/) {}

} // extern "C"
