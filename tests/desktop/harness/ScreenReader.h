#pragma once

#include "tests/desktop/harness/ChildProcess.h"
#include "tests/desktop/harness/SessionBus.h"
#include "tests/desktop/harness/WindowFacts.h"

#include <memory>
#include <string>
#include <vector>

namespace mirrolet::harness {

/// Reads the controls of a program as assistive software does, through the accessibility bus of a session
/// bus. The program must have been started with the variables of `environment()`.
class ScreenReader {
  public:
    struct Element {
        std::string role;  ///< The kind of control, such as "check box" or "combo box".
        std::string name;  ///< The accessible name. For a combo box, the chosen entry.
        std::string label; ///< The name of the label that belongs to this control.
        std::string description;
        Box box; ///< The control's place, in pixels before scaling by QT_SCALE_FACTOR.
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
    /// Returns all controls that the program shows now, in the order of the accessibility tree.
    [[nodiscard]] std::vector<Element> read(pid_t program) const;

  private:
    const SessionBus& bus;
    Sandbox sandbox;
    std::unique_ptr<ChildProcess> accessibilityBus;
};

} // namespace mirrolet::harness
