#pragma once

#include "tests/desktop/harness/ChildProcess.h"
#include "tests/desktop/harness/SessionBus.h"
#include "tests/desktop/harness/WindowFacts.h"

#include <memory>
#include <string>
#include <vector>

namespace mirrolet::harness {

/// The accessibility bus beside a session bus, and what a screen reader learns there of a program that was
/// started with `environment()`.
class ScreenReader {
  public:
    struct Element {
        std::string role;  ///< "check box", "combo box", ...
        std::string name;  ///< Of a combo box: what is chosen.
        std::string label; ///< The name of what labels it.
        std::string description;
        Box box; ///< Of the root window.
        std::string text;
        bool focused = false;
        bool focusable = false;
        bool checked = false;

        [[nodiscard]] bool isNamed(const std::string& wanted) const {
            return name == wanted || label == wanted;
        }
    };

    explicit ScreenReader(const SessionBus& bus);

    static Environment environment() { return {{"QT_LINUX_ACCESSIBILITY_ALWAYS_ON", "1"}}; }
    /// All that the program shows now, in the order of its tree.
    [[nodiscard]] std::vector<Element> read(pid_t program) const;

  private:
    const SessionBus& bus;
    Sandbox sandbox;
    std::unique_ptr<ChildProcess> accessibilityBus;
};

} // namespace mirrolet::harness
