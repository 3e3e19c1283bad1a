#pragma once

#include "tests/desktop/harness/CallWindow.h"
#include "tests/desktop/harness/XServer.h"

#include <memory>
#include <string>
#include <vector>

namespace mirrolet::bench {

/// Each title in a crowd begins with this text and ends with a number.
inline constexpr const char* crowdTitle = "A document of some length, number ";

/// Holds many ordinary windows. Each window belongs to a process of its own.
using Crowd = std::vector<std::unique_ptr<harness::CallWindow>>;

inline Crowd crowd(const harness::XServer& server, int count) {
    Crowd windows;
    for (int i = 0; i < count; ++i) {
        harness::CallWindow::Options options;
        options.title = crowdTitle + std::to_string(i) + " - Editor";
        options.wmClass = "Editor";
        options.wmInstance = "editor";
        options.colour = "3f5170";
        // The windows are small, because an X server may keep the pixels of all of them in memory.
        options.place = {10 * i % 1000, 80, 300, 200};
        windows.push_back(std::make_unique<harness::CallWindow>(server, options));
    }
    return windows;
}

} // namespace mirrolet::bench
