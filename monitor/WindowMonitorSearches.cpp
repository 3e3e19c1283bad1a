// These functions of WindowMonitor choose at most one window from the window list.

#include "monitor/WindowMonitor.h"
#include "platform/appkit/NSRunningApplication.h"
#include "platform/appkit/NSWorkspace.h"
#include "platform/foundation/Lowercased.h"
#include "platform/foundation/NSProcessInfo.h"

#include <algorithm>
#include <array>
#include <functional>
#include <iterator>
#include <map>
#include <string_view>
#include <utility>

namespace mirrolet {

using platform::PropertyList;

namespace {

using Windows = std::vector<WindowMonitor::InternalWindowInfo>;
using BundleIdentifiers = std::map<std::int32_t, std::optional<std::string>>;

// Windows that are narrower or lower than this are never offered. In points.
constexpr double minimumSide = 100;

const std::string whatsAppBundleIdentifier = "net.whatsapp.WhatsApp";

// A window whose title contains one of these texts is taken for the window of a call. Titles are compared in
// lower case.
constexpr std::array<std::string_view, 4> callTitleKeywords = {"video call", "voice call", "group call",
                                                               "call with"};

const std::set<std::string>& whatsAppOwnerNames() {
    static const std::set<std::string> names = {"WhatsApp", "WhatsApp Helper"};
    return names;
}

// Returns the owner names of windows that belong to the desktop itself, such as docks.
const std::set<std::string>& excludedOwnerNames() {
    static const std::set<std::string> names = {"Window Server",      "Dock",
                                                "Control Center",     "NotificationCenter",
                                                "Spotlight",          "loginwindow",
                                                "SystemUIServer",     "CoreServicesUIAgent",
                                                "WallpaperAgent",     "screencaptureui",
                                                "TextInputMenuAgent", "AXVisualSupportAgent",
                                                "ScreenSaverEngine"};
    return names;
}

double area(const WindowMonitor::InternalWindowInfo& window) {
    return window.bounds.width() * window.bounds.height();
}

DetectedWindowInfo detected(const WindowMonitor::InternalWindowInfo& window, bool isLikelyCall) {
    return {window.windowID,  window.bounds,           window.windowName,
            window.ownerName, window.bundleIdentifier, isLikelyCall};
}

template <class Condition> Windows filtered(const Windows& windows, const Condition& condition) {
    Windows kept;
    std::copy_if(windows.begin(), windows.end(), std::back_inserter(kept), condition);
    return kept;
}

const PropertyList& valueOf(const PropertyList::Dictionary& entry, const char* key) {
    static const PropertyList missing;
    const auto found = entry.find(key);
    return found == entry.end() ? missing : found->second;
}

/// Converts one dictionary of the window list. Leaves the bundle identifier empty, because currentWindows()
/// sets it. Returns none if the window must never be offered.
std::optional<WindowMonitor::InternalWindowInfo> rowFrom(const PropertyList::Dictionary& entry,
                                                         std::int32_t ownProcess) {
    if (valueOf(entry, platform::kCGWindowLayer).asInt32() != 0)
        return std::nullopt;
    const auto owner = valueOf(entry, platform::kCGWindowOwnerPID).asInt32();
    if (!owner || *owner == ownProcess)
        return std::nullopt;
    const auto* ownerName = valueOf(entry, platform::kCGWindowOwnerName).asString();
    if (!ownerName)
        return std::nullopt;
    const auto number = valueOf(entry, platform::kCGWindowNumber).asUInt32();
    if (!number)
        return std::nullopt;
    const auto bounds =
        platform::CGRectMakeWithDictionaryRepresentation(valueOf(entry, platform::kCGWindowBounds));
    if (!bounds || !(bounds->width() >= minimumSide) || !(bounds->height() >= minimumSide))
        return std::nullopt;
    const auto* title = valueOf(entry, platform::kCGWindowName).asString();
    return WindowMonitor::InternalWindowInfo{*number, *bounds, title ? *title : "", *ownerName, *owner, {}};
}

std::optional<std::string> bundleIdentifier(std::int32_t process, BundleIdentifiers& cache) {
    if (const auto known = cache.find(process); known != cache.end())
        return known->second;
    const auto application = platform::NSRunningApplication::withProcessIdentifier(process);
    return cache[process] = application ? application->bundleIdentifier() : std::nullopt;
}

bool namesCall(const std::string& title) {
    const auto lower = platform::lowercased(title);
    return std::any_of(callTitleKeywords.begin(), callTitleKeywords.end(),
                       [&lower](auto keyword) { return lower.find(keyword) != std::string::npos; });
}

} // namespace

Windows WindowMonitor::currentWindows() {
    const auto list = platform::CGWindowListCopyWindowInfo(platform::kCGWindowListOptionOnScreenOnly |
                                                               platform::kCGWindowListExcludeDesktopElements,
                                                           platform::kCGNullWindowID);
    const auto* entries = list ? list->asArray() : nullptr;
    if (!entries)
        return {};
    const auto ownProcess = platform::NSProcessInfo::processInfo().processIdentifier();
    // A process without an identifier is cached too, so each process is looked up only once.
    BundleIdentifiers cache;
    Windows windows;
    for (const auto& entry : *entries) {
        const auto* dictionary = entry.asDictionary();
        auto row = dictionary ? rowFrom(*dictionary, ownProcess) : std::nullopt;
        if (!row)
            continue;
        row->bundleIdentifier = bundleIdentifier(row->ownerPID, cache);
        windows.push_back(std::move(*row));
    }
    return windows;
}

std::optional<DetectedWindowInfo> WindowMonitor::largestWindow(const Windows& windows) {
    // If several windows are equally large, max_element() returns the first one, which is nearest to the
    // front.
    const auto largest = std::max_element(windows.begin(), windows.end(),
                                          [](const auto& a, const auto& b) { return area(a) < area(b); });
    if (largest == windows.end())
        return std::nullopt;
    return detected(*largest, false);
}

std::optional<DetectedWindowInfo> WindowMonitor::largestFrontmostWindow(const Windows& windows) {
    const auto front = platform::NSWorkspace::shared().frontmostApplication();
    if (!front)
        return largestWindow(windows);
    const auto own = filtered(
        windows, [&front](const auto& window) { return window.ownerPID == front->processIdentifier(); });
    if (auto window = largestWindow(own))
        return window;
    return largestWindow(windows);
}

std::optional<DetectedWindowInfo> WindowMonitor::likelyCallWindow(const Windows& windows) {
    for (const auto& window : windows) {
        if (namesCall(window.windowName))
            return detected(window, true);
    }
    if (windows.size() < 2)
        return std::nullopt;
    // The largest window is the messenger's main window, so the second-largest one is taken for the window of
    // the call.
    auto sorted = windows;
    std::stable_sort(sorted.begin(), sorted.end(),
                     [](const auto& a, const auto& b) { return area(a) > area(b); });
    return detected(sorted[1], true);
}

std::optional<DetectedWindowInfo> WindowMonitor::candidateForAllWindows() {
    return largestFrontmostWindow(filtered(currentWindows(), [](const auto& window) {
        return !excludedOwnerNames().contains(window.ownerName);
    }));
}

std::optional<DetectedWindowInfo>
WindowMonitor::candidateForSpecificApps(const std::set<std::string>& selected) {
    if (selected.empty())
        return std::nullopt;
    const auto windows = currentWindows();
    auto rest = selected;
    if (rest.erase(whatsAppBundleIdentifier) > 0) {
        const auto messenger = filtered(
            windows, [](const auto& window) { return whatsAppOwnerNames().contains(window.ownerName); });
        if (auto call = likelyCallWindow(messenger))
            return call;
        if (auto only = largestWindow(messenger))
            return only;
    }
    if (rest.empty())
        return std::nullopt;
    return largestFrontmostWindow(filtered(windows, [&rest](const auto& window) {
        return window.bundleIdentifier && rest.contains(*window.bundleIdentifier);
    }));
}

} // namespace mirrolet
