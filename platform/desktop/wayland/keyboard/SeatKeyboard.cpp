#include "platform/desktop/wayland/keyboard/SeatKeyboard.h"

#include <cstring>
#include <sys/mman.h>
#include <unistd.h>
#include <utility>

namespace mirrolet::platform::desktop::wayland {

namespace {

/// The seat is bound in at most this version, the first one with the request wl_seat.release.
constexpr std::uint32_t highestSeatVersion = WL_SEAT_RELEASE_SINCE_VERSION;

void releaseKeyboard(wl_keyboard* keyboard) {
    if (wl_keyboard_get_version(keyboard) >= WL_KEYBOARD_RELEASE_SINCE_VERSION)
        wl_keyboard_release(keyboard);
    else
        wl_keyboard_destroy(keyboard);
}

} // namespace

SeatKeyboard::SeatKeyboard(WaylandConnection& connection)
    : seat(connection.bind<wl_seat>(wl_seat_interface, highestSeatVersion)),
      present(Keymap::ofLayouts(std::string())) {
    static const wl_seat_listener listener = {
        .capabilities =
            [](void* self, wl_seat*, std::uint32_t capabilities) {
                static_cast<SeatKeyboard*>(self)->followCapabilities(capabilities);
            },
        .name = [](void*, wl_seat*, const char*) {},
    };
    if (seat)
        wl_seat_add_listener(seat, &listener, this);
}

SeatKeyboard::~SeatKeyboard() {
    if (keyboard)
        releaseKeyboard(keyboard);
    if (seat && wl_seat_get_version(seat) >= WL_SEAT_RELEASE_SINCE_VERSION)
        wl_seat_release(seat);
    else if (seat)
        wl_seat_destroy(seat);
}

std::shared_ptr<const Keymap> SeatKeyboard::keymap() const {
    const MutexLock lock(keymapMutex);
    return present;
}

void SeatKeyboard::followCapabilities(std::uint32_t capabilities) {
    const bool has = (capabilities & WL_SEAT_CAPABILITY_KEYBOARD) != 0;
    if (has == (keyboard != nullptr))
        return;
    if (!has) {
        releaseKeyboard(std::exchange(keyboard, nullptr));
        return;
    }
    static const wl_keyboard_listener listener = [] {
        wl_keyboard_listener events{};
        events.keymap = [](void* self, wl_keyboard*, std::uint32_t format, std::int32_t descriptor,
                           std::uint32_t size) {
            static_cast<SeatKeyboard*>(self)->read(format, descriptor, size);
        };
        // A compositor sends the events below only to clients with windows, except repeat_info, which is not
        // needed.
        events.enter = [](void*, wl_keyboard*, std::uint32_t, wl_surface*, wl_array*) {};
        events.leave = [](void*, wl_keyboard*, std::uint32_t, wl_surface*) {};
        events.key = [](void*, wl_keyboard*, std::uint32_t, std::uint32_t, std::uint32_t, std::uint32_t) {};
        events.modifiers = [](void*, wl_keyboard*, std::uint32_t, std::uint32_t, std::uint32_t, std::uint32_t,
                              std::uint32_t) {};
        events.repeat_info = [](void*, wl_keyboard*, std::int32_t, std::int32_t) {};
        return events;
    }();
    keyboard = wl_seat_get_keyboard(seat);
    wl_keyboard_add_listener(keyboard, &listener, this);
}

void SeatKeyboard::read(std::uint32_t format, int descriptor, std::uint32_t size) {
    void* mapped = format == WL_KEYBOARD_KEYMAP_FORMAT_XKB_V1 && size > 0
                       ? mmap(nullptr, size, PROT_READ, MAP_PRIVATE, descriptor, 0)
                       : MAP_FAILED;
    close(descriptor);
    if (mapped == MAP_FAILED)
        return;
    const auto* text = static_cast<const char*>(mapped);
    auto next = Keymap::fromText(std::string(text, strnlen(text, size))); // The size includes the final zero.
    munmap(mapped, size);
    if (!next)
        return;
    {
        const MutexLock lock(keymapMutex);
        present = std::move(next);
    }
    if (changed)
        changed();
}

} // namespace mirrolet::platform::desktop::wayland
