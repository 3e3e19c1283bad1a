// Fuzzes the code that describes a window for the window list. The code reads the window's properties, and
// any client can write anything into them.

#include "platform/desktop/x11/windows/WindowDescription.h"
#include "platform/desktop/x11/windows/WindowText.h"
#include "tests/fuzz/Fuzz.h"

#include <array>
#include <cstdint>

namespace {

using namespace mirrolet::platform::desktop;
using namespace mirrolet::platform::desktop::x11;
using mirrolet::fuzz::expect;

Atoms atomsOfNoServer() {
    Atoms atoms{};
    atoms.UTF8_STRING = 101;
    atoms.COMPOUND_TEXT = 102;
    atoms._NET_WM_STATE_HIDDEN = 103;
    atoms._NET_WM_STATE_ABOVE = 104;
    atoms._NET_WM_WINDOW_TYPE_DOCK = 105;
    atoms._NET_WM_WINDOW_TYPE_NORMAL = 106;
    atoms._NET_WM_WINDOW_TYPE_TOOLTIP = 107;
    return atoms;
}

/// Makes window properties from a fuzzer's input. Each property begins with two bytes. The first byte chooses
/// the property's type, its format and whether its value was cut off. The second byte is the length of the
/// value.
class Input : public mirrolet::fuzz::Bytes {
  public:
    using Bytes::Bytes;

    Property property(const Atoms& atoms) {
        const std::array<xcb_atom_t, 8> types = {
            XCB_ATOM_NONE, XCB_ATOM_STRING,   atoms.UTF8_STRING, atoms.COMPOUND_TEXT,
            XCB_ATOM_ATOM, XCB_ATOM_CARDINAL, XCB_ATOM_WINDOW,   9999};
        const std::array<std::uint8_t, 4> formats = {8, 16, 32, 0};
        const auto kind = byte();
        return {types[kind & 7U], formats[kind >> 3U & 3U], take(byte()), kind >= 128};
    }

    int extent() { return 1 + byte() * 256 + byte(); }
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const Atoms atoms = atomsOfNoServer();
    Input input(mirrolet::fuzz::textOf(data, size));
    const PixelRect bounds{-input.extent(), input.extent(), input.extent(), input.extent()};
    const auto netName = input.property(atoms), name = input.property(atoms), state = input.property(atoms),
               types = input.property(atoms), frameExtents = input.property(atoms),
               wmClass = input.property(atoms), toolkit = input.property(atoms), pid = input.property(atoms);
    if (const auto window = describe(bounds, {netName, name, state, types, frameExtents}, atoms)) {
        expect(window->bounds.width > 0 && window->bounds.height > 0);
        expect(window->bounds.width <= bounds.width && window->bounds.height <= bounds.height);
        expect(!window->title || (!window->title->empty() && repairedUtf8(*window->title) == *window->title));
    }
    const auto owner = windowClass(wmClass, toolkit, atoms);
    for (const auto& text : {owner.instance, owner.name, owner.gtkApplicationId})
        expect(repairedUtf8(text) == text);
    expect(claimedPid(pid) >= 0);
    return 0;
}
