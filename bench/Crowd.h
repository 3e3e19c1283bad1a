#pragma once

#include "tests/desktop/harness/CallWindow.h"
#include "tests/desktop/harness/XServer.h"

#include <memory>
#include <string>
#include <vector>

namespace mirrolet::bench {

/// The first word of the titles in a crowd.
inline constexpr const char* crowdTitle = "A document of some length, number ";

/// Ordinary windows of other programs, each with its own process.
using Crowd = std::vector<std::unique_ptr<harness::CallWindow>>;

inline Crowd crowd(const harness::XServer& server, int count) {
    Crowd windows;
    for (int i = 0; i < count; ++i) {
        harness::CallWindow::Options options;
        options.title = crowdTitle + std::to_string(i) + " - Editor";
        options.wmClass = "Editor";
        options.wmInstance = "editor";
        options.colour = "3f5170";
        options.place = {10 * i % 1000, 80, 300, 200}; // Small, because a server may keep the pixels of each.
        windows.push_back(std::make_unique<harness::CallWindow>(server, options));
    }
    return windows;
}

} // namespace mirrolet::bench
