#include "platform/coregraphics/CGWindowList.h"

#include "platform/coregraphics/DisplayScale.h"
#include "platform/desktop/Desktop.h"

#include <utility>

namespace mirrolet::platform {

namespace {

PropertyList boundsInPoints(const desktop::PixelRect& pixels, double scale) {
    return CGRectCreateDictionaryRepresentation(
        {{pixels.x / scale, pixels.y / scale}, {pixels.width / scale, pixels.height / scale}});
}

PropertyList windowInfo(desktop::WindowRow row, double scale) {
    PropertyList::Dictionary info;
    info[kCGWindowNumber] = row.number;
    info[kCGWindowLayer] = row.layer;
    info[kCGWindowBounds] = boundsInPoints(row.bounds, scale);
    info[kCGWindowOwnerPID] = row.ownerPid;
    info[kCGWindowOwnerName] = std::move(row.ownerName);
    if (row.title)
        info[kCGWindowName] = std::move(*row.title);
    return info;
}

std::optional<double> number(const PropertyList::Dictionary& dictionary, const char* key) {
    const auto found = dictionary.find(key);
    return found == dictionary.end() ? std::nullopt : found->second.asDouble();
}

} // namespace

std::optional<PropertyList> CGWindowListCopyWindowInfo(CGWindowListOption options,
                                                       CGWindowID relativeToWindow) {
    constexpr auto served = kCGWindowListOptionOnScreenOnly | kCGWindowListExcludeDesktopElements;
    if (options != served || relativeToWindow != kCGNullWindowID)
        return std::nullopt;
    auto rows = desktop::Desktop::current().windowList().onScreenWindows();
    if (!rows)
        return std::nullopt;
    const double scale = DisplayScale::current();
    PropertyList::Array list;
    list.reserve(rows->size());
    for (auto& row : *rows)
        list.push_back(windowInfo(std::move(row), scale));
    return PropertyList(std::move(list));
}

std::optional<CGRect> CGRectMakeWithDictionaryRepresentation(const PropertyList& dictionary) {
    const auto* entries = dictionary.asDictionary();
    if (!entries)
        return std::nullopt;
    const auto x = number(*entries, "X");
    const auto y = number(*entries, "Y");
    const auto width = number(*entries, "Width");
    const auto height = number(*entries, "Height");
    if (!x || !y || !width || !height)
        return std::nullopt;
    return CGRect{{*x, *y}, {*width, *height}};
}

PropertyList CGRectCreateDictionaryRepresentation(const CGRect& rect) {
    return PropertyList::Dictionary{
        {"X", rect.minX()}, {"Y", rect.minY()}, {"Width", rect.width()}, {"Height", rect.height()}};
}

} // namespace mirrolet::platform
