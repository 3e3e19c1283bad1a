#include "platform/desktop/wayland/keyboard/Keymap.h"

#include "platform/desktop/keys/KeySymbolLabel.h"

#include <algorithm>
#include <array>
#include <xkbcommon/xkbcommon.h>

namespace mirrolet::platform::desktop::wayland {

namespace {

constexpr std::uint32_t evdevOffset = 8;

struct XkbRelease {
    void operator()(xkb_context* context) const { xkb_context_unref(context); }
    void operator()(xkb_keymap* keymap) const { xkb_keymap_unref(keymap); }
    void operator()(xkb_state* state) const { xkb_state_unref(state); }
};
template <typename T> using XkbPointer = std::unique_ptr<T, XkbRelease>;

/// A modifier, the evdev codes of its left and right key, and the XKB modifier that these keys set in nearly
/// every layout.
struct Modifier {
    HotKeyModifier modifier;
    std::uint32_t left;
    std::uint32_t right;
    const char* name;
};
constexpr std::array allModifiers = {
    Modifier{superModifier, 125, 126, XKB_MOD_NAME_LOGO},
    Modifier{shiftModifier, 42, 54, XKB_MOD_NAME_SHIFT},
    Modifier{altModifier, 56, 100, XKB_MOD_NAME_ALT},
    Modifier{controlModifier, 29, 97, XKB_MOD_NAME_CTRL},
};

xkb_mod_mask_t maskNamed(xkb_keymap* keymap, const char* name) {
    const auto index = xkb_keymap_mod_get_index(keymap, name);
    return index == XKB_MOD_INVALID ? 0 : xkb_mod_mask_t{1} << index;
}

/// Returns whether the symbol is a letter that has a small and a capital form. A shortcut ignores the
/// difference.
bool isLetter(xkb_keysym_t symbol) {
    return xkb_keysym_to_upper(symbol) != xkb_keysym_to_lower(symbol);
}

XkbPointer<xkb_context> newContext() {
    XkbPointer<xkb_context> context(xkb_context_new(XKB_CONTEXT_NO_FLAGS));
    if (context)
        xkb_context_set_log_level(context.get(), XKB_LOG_LEVEL_CRITICAL);
    return context;
}

} // namespace

std::shared_ptr<const Keymap> Keymap::fromText(const std::string& text) {
    const auto context = newContext();
    auto* made = context ? xkb_keymap_new_from_buffer(context.get(), text.data(), text.size(),
                                                      XKB_KEYMAP_FORMAT_TEXT_V1, XKB_KEYMAP_COMPILE_NO_FLAGS)
                         : nullptr;
    return made ? std::shared_ptr<const Keymap>(new Keymap(made)) : nullptr;
}

std::shared_ptr<const Keymap> Keymap::ofLayouts(const std::string& layouts) {
    xkb_rule_names names{};
    names.layout = layouts.c_str();
    const auto context = newContext();
    auto* made = context ? xkb_keymap_new_from_names(context.get(), layouts.empty() ? nullptr : &names,
                                                     XKB_KEYMAP_COMPILE_NO_FLAGS)
                         : nullptr;
    return made ? std::shared_ptr<const Keymap>(new Keymap(made)) : nullptr;
}

Keymap::Keymap(xkb_keymap* keymap) : keymap(keymap) {}

Keymap::~Keymap() {
    xkb_keymap_unref(keymap);
}

/// Returns the XKB modifiers that a key sets while it is down. Leaves out Caps Lock and Num Lock.
std::uint32_t Keymap::maskOfPlace(std::uint32_t evdevCode) const {
    const XkbPointer<xkb_state> state(xkb_state_new(keymap));
    xkb_state_update_key(state.get(), evdevCode + evdevOffset, XKB_KEY_DOWN);
    const auto locks = maskNamed(keymap, XKB_MOD_NAME_CAPS) | maskNamed(keymap, XKB_MOD_NAME_NUM);
    return xkb_state_serialize_mods(state.get(), XKB_STATE_MODS_DEPRESSED) & ~locks;
}

/// Returns the XKB modifiers that the keys of these HotKeyModifier values set. Each value stands for its left
/// key. If the left key sets no modifier, or only a lock, the right key is used instead. That is so when Ctrl
/// and Caps Lock are swapped. Returns none if neither key sets a modifier, or if a value is unknown.
std::optional<std::uint32_t> Keymap::maskOf(std::uint32_t modifiers) const {
    std::uint32_t mask = 0;
    for (const auto& [modifier, left, right, name] : allModifiers) {
        if (!(modifiers & modifier))
            continue;
        const auto ofLeft = maskOfPlace(left);
        const auto ofKey = ofLeft ? ofLeft : maskOfPlace(right);
        if (!ofKey)
            return std::nullopt;
        mask |= ofKey;
        modifiers &= ~static_cast<std::uint32_t>(modifier);
    }
    return modifiers == 0 ? std::optional(mask) : std::nullopt;
}

KeyStroke Keymap::strokeOf(xkb_state* state, std::uint32_t key) const {
    KeyStroke stroke{xkb_state_key_get_one_sym(state, key), 0};
    for (const auto& [modifier, left, right, name] : allModifiers) {
        const auto index = xkb_keymap_mod_get_index(keymap, name);
        if (index == XKB_MOD_INVALID ||
            xkb_state_mod_index_is_active(state, index, XKB_STATE_MODS_EFFECTIVE) <= 0)
            continue;
        const bool isPart = xkb_state_mod_index_is_consumed2(state, key, index, XKB_CONSUMED_MODE_GTK) > 0;
        if (!isPart || (modifier == shiftModifier && isLetter(stroke.symbol)))
            stroke.modifiers |= modifier;
    }
    return stroke;
}

std::vector<KeyStroke> Keymap::strokes(std::uint32_t evdevCode, std::uint32_t modifiers) const {
    const MutexLock lock(stateMutex);
    const auto mask = maskOf(modifiers);
    if (!mask || evdevCode > xkb_keymap_max_keycode(keymap))
        return {};
    const auto key = evdevCode + evdevOffset;
    const auto caps = maskNamed(keymap, XKB_MOD_NAME_CAPS);
    const auto num = maskNamed(keymap, XKB_MOD_NAME_NUM);
    const XkbPointer<xkb_state> state(xkb_state_new(keymap));
    std::vector<KeyStroke> found;
    for (xkb_layout_index_t layout = 0; layout < xkb_keymap_num_layouts_for_key(keymap, key); ++layout)
        for (const auto locks : {xkb_mod_mask_t{0}, caps, num, caps | num}) {
            xkb_state_update_mask(state.get(), *mask, 0, locks, 0, 0, layout);
            const auto stroke = strokeOf(state.get(), key);
            if (stroke.symbol != XKB_KEY_NoSymbol &&
                std::find(found.begin(), found.end(), stroke) == found.end())
                found.push_back(stroke);
        }
    return found;
}

std::string Keymap::label(std::uint32_t evdevCode, std::uint32_t layout) const {
    if (evdevCode > xkb_keymap_max_keycode(keymap))
        return {};
    const xkb_keysym_t* symbols = nullptr;
    for (const auto one : {layout, xkb_layout_index_t{0}})
        if (one < xkb_keymap_num_layouts_for_key(keymap, evdevCode + evdevOffset) &&
            xkb_keymap_key_get_syms_by_level(keymap, evdevCode + evdevOffset, one, 0, &symbols) > 0)
            return keySymbolLabel(symbols[0]);
    return {};
}

} // namespace mirrolet::platform::desktop::wayland
