// Shows a window that looks like a video call, for tests. Paints a changing picture. Runs the commands that
// it reads from standard input. Prints the keys that the window receives.

#include "tests/desktop/programs/CommandLoop.h"

#include <xcb/xcb.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <map>
#include <memory>
#include <optional>
#include <sstream>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

struct Options {
    std::string title, wmClass, instance, type, extents, colour;
    std::vector<std::string> states;
    int x = 0, y = 0, width = 640, height = 400, rate = 0, border = 0, alpha = -1;
    bool overrideRedirect = false;
};

std::optional<Options> parse(const std::vector<std::string>& arguments) {
    Options options;
    const Handlers values{
        {"--title", storesIn(options.title)},
        {"--class", storesIn(options.wmClass)},
        {"--instance", storesIn(options.instance)},
        {"--type", storesIn(options.type)},
        {"--frame-extents", storesIn(options.extents)},
        {"--colour", storesIn(options.colour)},
        {"--rate", storesIn(options.rate)},
        {"--border", storesIn(options.border)},
        {"--alpha", storesIn(options.alpha)},
        {"--state", [&](const std::string& state) { options.states.push_back(state); }},
        {"--geometry",
         [&](const std::string& place) {
             char ignored = 0;
             std::istringstream(place) >> options.width >> ignored >> options.height >> options.x >>
                 options.y;
         }},
    };
    if (!readOptions(arguments, values, {{"--override-redirect", &options.overrideRedirect}}))
        return std::nullopt;
    return options;
}

/// Makes the window, and draws into it.
class Window {
  public:
    Window(xcb_connection_t* connection, const xcb_screen_t* screen, const Options& options)
        : connection(connection), screen(screen), alpha(options.alpha), width(options.width),
          height(options.height) {
        create(options);
        describe(options);
        map();
    }

    [[nodiscard]] xcb_window_t number() const { return window; }
    void map() { xcb_map_window(connection, window); }
    void unmap() { xcb_unmap_window(connection, window); }

    void resized(int newWidth, int newHeight) {
        if (newWidth == width && newHeight == height)
            return;
        width = newWidth;
        height = newHeight;
        makeCanvas();
    }

    void resize(const std::string& widthAndHeight) {
        std::array<std::uint32_t, 2> size{};
        std::istringstream(widthAndHeight) >> size[0] >> size[1];
        xcb_configure_window(connection, window, XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT,
                             size.data());
    }

    void setTitle(const std::string& title) {
        setText(XCB_ATOM_WM_NAME, XCB_ATOM_STRING, title);
        setText(atom("_NET_WM_NAME"), atom("UTF8_STRING"), title);
    }

    void fill(std::uint32_t colour, int x, int y, int w, int h) {
        setColour(colour);
        const xcb_rectangle_t area{std::int16_t(x), std::int16_t(y), std::uint16_t(w), std::uint16_t(h)};
        xcb_poly_fill_rectangle(connection, canvas, context, 1, &area);
    }

    void disc(std::uint32_t colour, int x, int y, int w, int h) {
        setColour(colour);
        const xcb_arc_t arc{std::int16_t(x), std::int16_t(y), std::uint16_t(w), std::uint16_t(h), 0,
                            360 * 64};
        xcb_poly_fill_arc(connection, canvas, context, 1, &arc);
    }

    /// Copies the finished frame to the window in one request, so that each frame causes one damage report
    /// and is never seen half drawn.
    void show() {
        xcb_copy_area(connection, canvas, window, context, 0, 0, 0, 0, std::uint16_t(width),
                      std::uint16_t(height));
        xcb_flush(connection);
    }

    [[nodiscard]] int currentWidth() const { return width; }
    [[nodiscard]] int currentHeight() const { return height; }

  private:
    void create(const Options& options) {
        depth = screen->root_depth;
        xcb_visualid_t visual = screen->root_visual;
        if (alpha >= 0)
            findVisualWithAlpha(visual);
        const xcb_colormap_t map = xcb_generate_id(connection);
        xcb_create_colormap(connection, XCB_COLORMAP_ALLOC_NONE, map, screen->root, visual);
        window = xcb_generate_id(connection);
        const std::array<std::uint32_t, 4> values{0, options.overrideRedirect ? 1U : 0U,
                                                  XCB_EVENT_MASK_EXPOSURE | XCB_EVENT_MASK_STRUCTURE_NOTIFY |
                                                      XCB_EVENT_MASK_KEY_PRESS | XCB_EVENT_MASK_KEY_RELEASE,
                                                  map};
        xcb_create_window(connection, depth, window, screen->root, std::int16_t(options.x),
                          std::int16_t(options.y), std::uint16_t(width), std::uint16_t(height),
                          std::uint16_t(options.border), XCB_WINDOW_CLASS_INPUT_OUTPUT, visual,
                          XCB_CW_BORDER_PIXEL | XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK |
                              XCB_CW_COLORMAP,
                          values.data());
        context = xcb_generate_id(connection);
        const std::uint32_t noExposures = 0;
        xcb_create_gc(connection, context, window, XCB_GC_GRAPHICS_EXPOSURES, &noExposures);
        makeCanvas();
    }

    void findVisualWithAlpha(xcb_visualid_t& visual) {
        for (auto each = xcb_screen_allowed_depths_iterator(screen); each.rem > 0; xcb_depth_next(&each)) {
            if (each.data->depth != 32 || xcb_depth_visuals_length(each.data) == 0)
                continue;
            depth = 32;
            visual = xcb_depth_visuals(each.data)->visual_id;
            return;
        }
    }

    void describe(const Options& options) {
        setTitle(options.title);
        std::string names = options.instance;
        names.push_back('\0');
        names += options.wmClass;
        names.push_back('\0');
        setText(XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, names);
        setNumbers("_NET_WM_PID", XCB_ATOM_CARDINAL, {static_cast<std::uint32_t>(getpid())});
        std::vector<std::uint32_t> states;
        for (const std::string& state : options.states)
            states.push_back(atom(state));
        setNumbers("_NET_WM_STATE", XCB_ATOM_ATOM, states);
        if (!options.type.empty())
            setNumbers("_NET_WM_WINDOW_TYPE", XCB_ATOM_ATOM, {atom(options.type)});
        std::array<std::uint32_t, 4> extents{};
        char ignored = 0;
        if (std::istringstream(options.extents) >> extents[0] >> ignored >> extents[1] >> ignored >>
            extents[2] >> ignored >> extents[3])
            setNumbers("_GTK_FRAME_EXTENTS", XCB_ATOM_CARDINAL, {extents.begin(), extents.end()});
        // The flags in WM_NORMAL_HINTS say that the user chose the position, so that a window manager keeps
        // it.
        std::vector<std::uint32_t> hints(18);
        hints[0] = 1;
        setNumbers("WM_NORMAL_HINTS", atom("WM_SIZE_HINTS"), hints);
        // The flags in WM_HINTS ask for the focus.
        setNumbers("WM_HINTS", atom("WM_HINTS"), {1, 1, 0, 0, 0, 0, 0, 0, 0});
    }

    void makeCanvas() {
        if (canvas != XCB_NONE)
            xcb_free_pixmap(connection, canvas);
        canvas = xcb_generate_id(connection);
        xcb_create_pixmap(connection, depth, canvas, window, std::uint16_t(width), std::uint16_t(height));
    }

    void setColour(std::uint32_t colour) {
        // The X server expects each colour of a 32-bit window to be multiplied by the alpha.
        const std::uint32_t a = alpha < 0 ? 255 : static_cast<std::uint32_t>(alpha);
        std::uint32_t pixel = a << 24;
        for (const unsigned shift : {0U, 8U, 16U})
            pixel |= (colour >> shift & 0xff) * a / 255 << shift;
        xcb_change_gc(connection, context, XCB_GC_FOREGROUND, &pixel);
    }

    xcb_atom_t atom(const std::string& name) {
        xcb_atom_t& known = atoms[name];
        if (known != XCB_ATOM_NONE)
            return known;
        const auto cookie = xcb_intern_atom(connection, 0, std::uint16_t(name.size()), name.c_str());
        const std::unique_ptr<xcb_intern_atom_reply_t, decltype(&std::free)> reply(
            xcb_intern_atom_reply(connection, cookie, nullptr), &std::free);
        if (reply)
            known = reply->atom;
        return known;
    }

    void setText(xcb_atom_t property, xcb_atom_t type, const std::string& text) {
        xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window, property, type, 8,
                            std::uint32_t(text.size()), text.data());
    }

    void setNumbers(const std::string& property, xcb_atom_t type, const std::vector<std::uint32_t>& numbers) {
        xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window, atom(property), type, 32,
                            std::uint32_t(numbers.size()), numbers.data());
    }

    xcb_connection_t* connection;
    const xcb_screen_t* screen;
    int alpha, width, height;
    std::uint8_t depth = 24;
    xcb_window_t window = XCB_NONE;
    xcb_gcontext_t context = XCB_NONE;
    xcb_pixmap_t canvas = XCB_NONE;
    std::map<std::string, xcb_atom_t> atoms;
};

/// Draws two people and a bar that moves with each frame, or plain colours.
class Scene {
  public:
    explicit Scene(const std::string& colours) { setPlain(colours); }

    /// Sets what is drawn: two people if there is no colour, a plain window for one colour, and a colour in
    /// each quarter of the window for four.
    void setPlain(const std::string& colours) {
        plain.clear();
        std::istringstream list(colours);
        for (std::string colour; std::getline(list, colour, ',');)
            plain.push_back(static_cast<std::uint32_t>(std::stoul(colour, nullptr, 16)));
    }
    void nextFrame() { ++frame; }

    void paint(Window& window) const {
        const int w = window.currentWidth();
        const int h = window.currentHeight();
        if (!plain.empty()) {
            for (int i = 0; i < 4; ++i) // Upper left, upper right, lower left, lower right.
                window.fill(plain[i % plain.size()], i % 2 * w / 2, i / 2 * h / 2, w, h);
        } else {
            window.fill(0x15181d, 0, 0, w, h);
            const int gap = w / 40;
            const int tile = (w - 3 * gap) / 2;
            person(window, gap, gap, tile, h - h / 6 - gap, 0x2f6f8f, 0xf2c9a0);
            person(window, 2 * gap + tile, gap, tile, h - h / 6 - gap, 0x7a4f8f, 0xc98f6b);
            controls(window, w, h);
        }
        window.show();
    }

  private:
    static void person(Window& window, int x, int y, int w, int h, std::uint32_t wall, std::uint32_t skin) {
        window.fill(wall, x, y, w, h);
        const int head = std::min(w, h) * 2 / 5;
        const int middle = x + w / 2;
        const int top = y + h / 2 - head * 3 / 4;
        window.fill(0x3d332c, middle - head * 5 / 8, top + head / 3, head * 5 / 4, head / 2);
        window.disc(0x3d332c, middle - head * 5 / 8, top - head / 6, head * 5 / 4, head);
        window.fill(skin, middle - head / 5, top + head, head * 2 / 5, head / 2);
        window.disc(skin, middle - head / 2, top, head, head * 5 / 4);
        // Draws the shoulders as a disc, and covers what extends below the person's tile.
        window.disc(0x26303c, middle - head, y + h - head * 5 / 8, head * 2, head * 5 / 4);
        window.fill(0x15181d, x, y + h, w, head);
    }

    void controls(Window& window, int w, int h) const {
        const int line = h - h / 9;
        const int size = h / 12;
        window.disc(0xd93a3a, w / 2 - size / 2, line, size, size);
        window.disc(0x3a424d, w / 2 - size * 2, line, size, size);
        window.disc(0x3a424d, w / 2 + size, line, size, size);
        window.fill(0x35c46a, static_cast<int>(frame * 4 % static_cast<unsigned>(w)), h - 6, w / 10, 6);
    }

    unsigned frame = 0;
    std::vector<std::uint32_t> plain;
};

/// Handles X events and commands. Ends also when the connection to the X server is lost.
class Loop {
  public:
    Loop(xcb_connection_t* connection, Window& window, const Options& options)
        : connection(connection), window(window), scene(options.colour),
          commands(
              {
                  {"resize", [this](const std::string& size) { this->window.resize(size); }},
                  {"title", [this](const std::string& title) { this->window.setTitle(title); }},
                  {"unmap", [this](const std::string&) { this->window.unmap(); }},
                  {"map", [this](const std::string&) { this->window.map(); }},
                  {"repaint", [this](const std::string&) { nextFrame(); }},
                  {"colour", [this](const std::string& colours) { recolour(colours); }},
              },
              [this] { nextFrame(); }, options.rate) {}

    void run() {
        while (!commands.isDone() && xcb_connection_has_error(connection) == 0) {
            xcb_flush(connection);
            commands.wait(xcb_get_file_descriptor(connection));
            handleEvents();
            commands.proceed();
        }
    }

  private:
    void recolour(const std::string& colours) {
        scene.setPlain(colours);
        nextFrame();
    }

    void nextFrame() {
        scene.nextFrame();
        scene.paint(window);
    }

    void handleEvents() {
        while (auto* raw = xcb_poll_for_event(connection)) {
            const std::unique_ptr<xcb_generic_event_t, decltype(&std::free)> event(raw, &std::free);
            handle(*event);
        }
    }

    void handle(const xcb_generic_event_t& event) {
        switch (event.response_type & 0x7f) {
        case XCB_EXPOSE:
            scene.paint(window);
            break;
        case XCB_CONFIGURE_NOTIFY: {
            const auto& configured = reinterpret_cast<const xcb_configure_notify_event_t&>(event);
            window.resized(configured.width, configured.height);
            scene.paint(window);
            break;
        }
        case XCB_KEY_PRESS:
        case XCB_KEY_RELEASE: {
            const auto& key = reinterpret_cast<const xcb_key_press_event_t&>(event);
            std::cout << "key " << int(key.detail)
                      << (event.response_type == XCB_KEY_PRESS ? " press" : " release") << std::endl;
            break;
        }
        default:
            break;
        }
    }

    xcb_connection_t* connection;
    Window& window;
    Scene scene;
    CommandLoop commands;
};

} // namespace

int main(int count, char** values) {
    const auto options = parse({values + 1, values + count});
    if (!options) {
        std::cerr << "call_window: an argument that it does not know" << std::endl;
        return 2;
    }
    xcb_connection_t* connection = xcb_connect(nullptr, nullptr);
    if (xcb_connection_has_error(connection) != 0) {
        std::cerr << "call_window: no display" << std::endl;
        return 1;
    }
    Window window(connection, xcb_setup_roots_iterator(xcb_get_setup(connection)).data, *options);
    xcb_flush(connection);
    std::cout << "window " << window.number() << std::endl;
    Loop(connection, window, *options).run();
    xcb_disconnect(connection);
    return 0;
}
