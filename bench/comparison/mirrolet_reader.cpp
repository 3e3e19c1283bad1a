// The program mirrolet_reader. Reads the list of windows once for each line of standard input, in the same
// way as a poll of Mirrolet.

#include "bench/comparison/Reader.h"
#include "monitor/WindowMonitor.h"
#include "platform/appkit/NSWorkspace.h"
#include "platform/desktop/x11/X11Desktop.h"

#include <algorithm>
#include <cstdlib>

int main() {
    using namespace mirrolet;
    using platform::desktop::Desktop;
    std::string problem;
    auto x11 = platform::desktop::x11::makeX11Desktop(problem, [] { std::_Exit(EXIT_FAILURE); });
    if (!x11) {
        std::cerr << problem << '\n';
        return EXIT_FAILURE;
    }
    Desktop::setCurrent(std::move(x11));
    for (std::string line; std::getline(std::cin, line);)
        bench::answerOnce([] {
            const auto windows = WindowMonitor::currentWindows();
            (void)platform::NSWorkspace::shared().frontmostApplication();
            return static_cast<std::size_t>(
                std::count_if(windows.begin(), windows.end(),
                              [](const auto& window) { return !window.windowName.empty(); }));
        });
    Desktop::setCurrent(nullptr);
    return EXIT_SUCCESS;
}
