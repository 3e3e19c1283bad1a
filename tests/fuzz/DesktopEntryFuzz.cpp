// Fuzzes the search for the application that owns a window. The input contains two desktop entry files, the
// names in the window's properties, and what /proc tells about the window's process.

#include "platform/desktop/applications/ApplicationResolver.h"
#include "tests/fuzz/Fuzz.h"

#include <cstdint>
#include <string>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace mirrolet::platform::desktop;
    // The input contains several texts. Each text ends at a byte 0xFF, which does not occur in UTF-8.
    auto rest = mirrolet::fuzz::textOf(data, size);
    const auto next = [&rest] {
        const auto end = rest.find('\xFF');
        const std::string text(rest.substr(0, end));
        rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
        return text;
    };
    DesktopEntries entries;
    for (const auto* id : {"org.first.App", "first_app"}) {
        if (auto entry = parseDesktopEntry(next(), id, std::string("/applications/") + id + ".desktop"))
            entries.add(std::move(*entry));
    }
    const WindowClass window{next(), next(), next()};
    const ProcessFacts process{7, "name", next(), next(), next(), next()};
    const auto* entry = entryOfWindow(window, process, entries);
    mirrolet::fuzz::expect(!entry || (!entry->name.empty() && entries.withId(entry->id) == entry));
    return 0;
}
