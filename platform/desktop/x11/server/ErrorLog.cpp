#include "platform/desktop/x11/server/ErrorLog.h"

#include "platform/desktop/x11/server/RequestName.h"
#include "platform/foundation/NSLog.h"

#include <xcb/damage.h>
#include <xcb/render.h>
#include <xcb/xfixes.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace mirrolet::platform::desktop::x11 {

namespace {

// The largest number of ranges of requests that are kept. A range is dropped once an event shows that the
// server has processed the range's requests. If more ranges than this remain, the server has stopped
// answering, and the oldest range is dropped.
constexpr std::size_t mostRanges = 1024;

constexpr std::array<std::string_view, 22> names = {
    "no error",  "BadRequest",    "BadValue",    "BadWindow",   "BadPixmap", "BadAtom",
    "BadCursor", "BadFont",       "BadMatch",    "BadDrawable", "BadAccess", "BadAlloc",
    "BadColor",  "BadGC",         "BadIDChoice", "BadName",     "BadLength", "BadImplementation",
    "BadDamage", "BadPictFormat", "BadPicture",  "BadRegion"};

} // namespace

std::uint64_t ErrorLog::beginRange(std::uint32_t sequence, ErrorSet expected) {
    const MutexLock lock(rangesMutex);
    if (ranges.size() == mostRanges)
        ranges.pop_front();
    ranges.push_back({++lastNumber, sequence, 0, false, expected});
    return lastNumber;
}

void ErrorLog::endRange(std::uint64_t number, std::uint32_t sequence) {
    const MutexLock lock(rangesMutex);
    const auto range = std::ranges::find(ranges, number, &Range::number);
    if (range == ranges.end())
        return;
    range->to = sequence;
    range->ended = true;
}

void ErrorLog::noteAnswered(std::uint32_t sequence) {
    const MutexLock lock(rangesMutex);
    std::erase_if(ranges,
                  [sequence](const Range& range) { return range.ended && precedes(range.to, sequence); });
}

bool ErrorLog::isExpected(std::uint32_t sequence, XError error) const {
    return std::ranges::any_of(ranges, [=](const Range& range) {
        return range.expected.holds(error) && precedes(range.from, sequence) &&
               (!range.ended || precedes(sequence, range.to));
    });
}

XError ErrorLog::kindOf(const xcb_generic_error_t& error) const {
    const auto isOf = [code = error.error_code](const Extension& extension, std::uint8_t number) {
        return extension && code == extension.firstError + number;
    };
    if (error.error_code <= XCB_IMPLEMENTATION)
        return static_cast<XError>(error.error_code);
    if (isOf(extensions.damage, XCB_DAMAGE_BAD_DAMAGE))
        return XError::damage;
    if (isOf(extensions.render, XCB_RENDER_PICT_FORMAT))
        return XError::pictureFormat;
    if (isOf(extensions.render, XCB_RENDER_PICTURE))
        return XError::picture;
    return isOf(extensions.xfixes, XCB_XFIXES_BAD_REGION) ? XError::region : XError::unknown;
}

void ErrorLog::note(const xcb_generic_error_t& error, ErrorSet expected) {
    const XError kind = kindOf(error);
    if (expected.holds(kind))
        return;
    {
        const MutexLock lock(rangesMutex);
        if (isExpected(error.full_sequence, kind) ||
            !logged.emplace(error.major_code, error.minor_code, error.error_code).second)
            return;
    }
    const auto index = static_cast<std::size_t>(kind);
    const auto name =
        index < names.size() ? std::string(names[index]) : "error " + std::to_string(error.error_code);
    NSLog("X11: unexpected " + name + " from " + requestName(extensions, error.major_code, error.minor_code) +
          " on resource " + std::to_string(error.resource_id));
}

} // namespace mirrolet::platform::desktop::x11
