#pragma once

#include "tests/desktop/harness/ChildProcess.h"
#include "tests/desktop/harness/SessionBus.h"
#include "tests/desktop/harness/WindowFacts.h"

#include <memory>
#include <string>
#include <vector>

namespace mirrolet::harness {

/// The accessibility bus of a session bus. A screen reader finds a program there if the program was started
/// with `environment()`.
class ScreenReader {
  public:
    struct Element {
        std::string role;  ///< "check box", "combo box", ...
        std::string name;  ///< Of a combo box: the chosen entry.
        std::string label; ///< The name of the object's label.
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
    /// All objects that the program shows now, in the order of the tree.
    [[nodiscard]] std::vector<Element> read(pid_t program) const;

  private:
    const SessionBus& bus;
    Sandbox sandbox;
    std::unique_ptr<ChildProcess> accessibilityBus;
};

} // namespace mirrolet::harness
