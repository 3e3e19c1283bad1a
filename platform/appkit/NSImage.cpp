#include "platform/appkit/NSImage.h"

#include <algorithm>
#include <array>
#include <utility>

namespace mirrolet::platform {

namespace {

struct Symbol {
    std::string_view name;
    bool isTemplate;
};

// The drawings in symbols.qrc. The drawing for the status item has fixed colours that are readable on any
// dock, because the program cannot know the dock's colour.
constexpr std::array symbols = {
    Symbol{"pip.fill", false},
    Symbol{"pip", true},
    Symbol{"gearshape", true},
    Symbol{"xmark", true},
};

const Symbol* symbolNamed(std::string_view name) {
    const auto* found = std::find_if(symbols.begin(), symbols.end(),
                                     [name](const Symbol& symbol) { return symbol.name == name; });
    return found == symbols.end() ? nullptr : found;
}

} // namespace

NSImage::NSImage(Content content, NSSize size, std::string description)
    : content(std::move(content)), points(size), description(std::move(description)) {}

NSImage::NSImage(std::shared_ptr<const desktop::WindowImage> window, NSSize size)
    : content{std::move(window), {}, {}}, points(size) {}

std::shared_ptr<NSImage> NSImage::systemSymbol(std::string_view name, std::string description) {
    if (!symbolNamed(name))
        return nullptr;
    return std::shared_ptr<NSImage>(
        new NSImage({nullptr, std::string(name), {}}, {16, 16}, std::move(description)));
}

std::shared_ptr<NSImage> NSImage::icon(std::string nameOrPath) {
    return std::shared_ptr<NSImage>(new NSImage({nullptr, {}, std::move(nameOrPath)}, {32, 32}, {}));
}

bool NSImage::isTemplate() const {
    const auto* symbol = symbolNamed(content.symbol);
    return symbol && symbol->isTemplate;
}

} // namespace mirrolet::platform
