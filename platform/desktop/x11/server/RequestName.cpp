#include "platform/desktop/x11/server/RequestName.h"

#include "platform/desktop/x11/server/XcbXkb.h"

#include <xcb/composite.h>
#include <xcb/damage.h>
#include <xcb/render.h>
#include <xcb/res.h>
#include <xcb/shape.h>
#include <xcb/shm.h>
#include <xcb/xfixes.h>
#include <xcb/xinput.h>

#include <algorithm>
#include <span>
#include <string_view>

namespace mirrolet::platform::desktop::x11 {

namespace {

struct Request {
    int opcode;
    std::string_view name;
};

constexpr Request core[] = {
    {XCB_CREATE_WINDOW, "CreateWindow"},
    {XCB_CHANGE_WINDOW_ATTRIBUTES, "ChangeWindowAttributes"},
    {XCB_GET_WINDOW_ATTRIBUTES, "GetWindowAttributes"},
    {XCB_DESTROY_WINDOW, "DestroyWindow"},
    {XCB_MAP_WINDOW, "MapWindow"},
    {XCB_CONFIGURE_WINDOW, "ConfigureWindow"},
    {XCB_GET_GEOMETRY, "GetGeometry"},
    {XCB_QUERY_TREE, "QueryTree"},
    {XCB_INTERN_ATOM, "InternAtom"},
    {XCB_CHANGE_PROPERTY, "ChangeProperty"},
    {XCB_GET_PROPERTY, "GetProperty"},
    {XCB_GET_SELECTION_OWNER, "GetSelectionOwner"},
    {XCB_SEND_EVENT, "SendEvent"},
    {XCB_GRAB_KEY, "GrabKey"},
    {XCB_UNGRAB_KEY, "UngrabKey"},
    {XCB_QUERY_KEYMAP, "QueryKeymap"},
    {XCB_TRANSLATE_COORDINATES, "TranslateCoordinates"},
    {XCB_SET_INPUT_FOCUS, "SetInputFocus"},
    {XCB_GET_INPUT_FOCUS, "GetInputFocus"},
    {XCB_CREATE_PIXMAP, "CreatePixmap"},
    {XCB_FREE_PIXMAP, "FreePixmap"},
    {XCB_CREATE_GC, "CreateGC"},
    {XCB_FREE_GC, "FreeGC"},
    {XCB_CLEAR_AREA, "ClearArea"},
    {XCB_COPY_AREA, "CopyArea"},
    {XCB_POLY_FILL_RECTANGLE, "PolyFillRectangle"},
    {XCB_PUT_IMAGE, "PutImage"},
    {XCB_GET_IMAGE, "GetImage"},
    {XCB_CREATE_COLORMAP, "CreateColormap"},
    {XCB_FREE_COLORMAP, "FreeColormap"},
    {XCB_GET_KEYBOARD_MAPPING, "GetKeyboardMapping"},
    {XCB_GET_MODIFIER_MAPPING, "GetModifierMapping"},
    {XCB_NO_OPERATION, "NoOperation"},
};
constexpr Request composite[] = {
    {XCB_COMPOSITE_REDIRECT_WINDOW, "RedirectWindow"},
    {XCB_COMPOSITE_UNREDIRECT_WINDOW, "UnredirectWindow"},
    {XCB_COMPOSITE_CREATE_REGION_FROM_BORDER_CLIP, "CreateRegionFromBorderClip"},
    {XCB_COMPOSITE_NAME_WINDOW_PIXMAP, "NameWindowPixmap"},
};
constexpr Request damage[] = {
    {XCB_DAMAGE_CREATE, "Create"},
    {XCB_DAMAGE_DESTROY, "Destroy"},
    {XCB_DAMAGE_SUBTRACT, "Subtract"},
};
constexpr Request render[] = {
    {XCB_RENDER_QUERY_PICT_FORMATS, "QueryPictFormats"},
    {XCB_RENDER_CREATE_PICTURE, "CreatePicture"},
    {XCB_RENDER_CHANGE_PICTURE, "ChangePicture"},
    {XCB_RENDER_FREE_PICTURE, "FreePicture"},
    {XCB_RENDER_COMPOSITE, "Composite"},
    {XCB_RENDER_FILL_RECTANGLES, "FillRectangles"},
    {XCB_RENDER_SET_PICTURE_TRANSFORM, "SetPictureTransform"},
    {XCB_RENDER_SET_PICTURE_FILTER, "SetPictureFilter"},
};
constexpr Request shape[] = {
    {XCB_SHAPE_RECTANGLES, "Rectangles"},
    {XCB_SHAPE_MASK, "Mask"},
};
constexpr Request shm[] = {
    {XCB_SHM_DETACH, "Detach"},
    {XCB_SHM_PUT_IMAGE, "PutImage"},
    {XCB_SHM_ATTACH_FD, "AttachFd"},
};
constexpr Request xfixes[] = {
    {XCB_XFIXES_SELECT_SELECTION_INPUT, "SelectSelectionInput"},
    {XCB_XFIXES_CREATE_REGION, "CreateRegion"},
    {XCB_XFIXES_CREATE_REGION_FROM_WINDOW, "CreateRegionFromWindow"},
    {XCB_XFIXES_DESTROY_REGION, "DestroyRegion"},
    {XCB_XFIXES_INTERSECT_REGION, "IntersectRegion"},
    {XCB_XFIXES_SUBTRACT_REGION, "SubtractRegion"},
    {XCB_XFIXES_EXPAND_REGION, "ExpandRegion"},
    {XCB_XFIXES_FETCH_REGION, "FetchRegion"},
    {XCB_XFIXES_SET_PICTURE_CLIP_REGION, "SetPictureClipRegion"},
};
constexpr Request xres[] = {
    {XCB_RES_QUERY_CLIENT_IDS, "QueryClientIds"},
};
constexpr Request xkb[] = {
    {XCB_XKB_SELECT_EVENTS, "SelectEvents"},
    {XCB_XKB_GET_STATE, "GetState"},
    {XCB_XKB_PER_CLIENT_FLAGS, "PerClientFlags"},
};

constexpr Request xinput[] = {
    {XCB_INPUT_XI_SELECT_EVENTS, "XISelectEvents"},
};

struct NamedExtension {
    Extension Extensions::*numbers;
    std::string_view name;
    std::span<const Request> requests;
};

constexpr NamedExtension extensionNames[] = {
    {&Extensions::composite, "COMPOSITE ", composite},
    {&Extensions::damage, "DAMAGE ", damage},
    {&Extensions::render, "RENDER ", render},
    {&Extensions::shape, "SHAPE ", shape},
    {&Extensions::shm, "MIT-SHM ", shm},
    {&Extensions::xfixes, "XFIXES ", xfixes},
    {&Extensions::xres, "X-Resource ", xres},
    {&Extensions::xkb, "XKEYBOARD ", xkb},
    {&Extensions::xinput, "XInputExtension ", xinput},
};

std::string nameIn(std::span<const Request> requests, int opcode) {
    const auto found = std::ranges::find(requests, opcode, &Request::opcode);
    return found == requests.end() ? "request " + std::to_string(opcode) : std::string(found->name);
}

} // namespace

std::string requestName(const Extensions& extensions, std::uint8_t majorOpcode, std::uint16_t minorOpcode) {
    for (const auto& extension : extensionNames)
        if ((extensions.*extension.numbers).majorOpcode == majorOpcode)
            return std::string(extension.name) + nameIn(extension.requests, minorOpcode);
    constexpr int firstOfExtensions = 128;
    if (majorOpcode < firstOfExtensions)
        return nameIn(core, majorOpcode);
    return "request " + std::to_string(majorOpcode) + "." + std::to_string(minorOpcode);
}

} // namespace mirrolet::platform::desktop::x11
