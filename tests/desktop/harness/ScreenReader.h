#pragma once

#include "tests/desktop/harness/ChildProcess.h"
#include "tests/desktop/harness/SessionBus.h"
#include "tests/desktop/harness/WindowFacts.h"

#include <memory>
#include <string>
#include <vector>

namespace mirrolet::harness {

/// A screen reader on the accessibility bus of a session bus. It finds a program there if the program was
/// started with `environment()`.
class ScreenReader {
  public:
    struct Element {
        std::string role;  ///< "check box", "combo box", ...
        std::string name;  ///< For a combo box the chosen entry.
        std::string label; ///< The name of the object that labels this one.
        std::string description;
        Box box; ///< In pixels of the root window.
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
    /// Returns all objects that the program shows now, in the order of the accessibility tree.
    [[nodiscard]] std::vector<Element> read(pid_t program) const;

  private:
    const SessionBus& bus;
    Sandbox sandbox;
    std::unique_ptr<ChildProcess> accessibilityBus;
};

} // namespace mirrolet::harness
