#pragma once

#include "tests/desktop/endtoend/EndToEndTest.h"
#include "tests/desktop/harness/ScreenReader.h"

#include <optional>

namespace mirrolet {

/// Runs the program with an open settings window. Tests find the controls as assistive software does, and use
/// them with the pointer and the keyboard.
class SettingsSteps : public EndToEndTest {
  protected:
    using Element = harness::ScreenReader::Element;

    static constexpr int down = 108, up = 103, right = 106, m = 50, g = 34, k = 37;

    explicit SettingsSteps(const harness::XServer::Options& screen = {});

    /// Starts the program with these defaults. Then starts it once more, which makes the running program show
    /// its settings.
    void openSettings(const std::string& defaults = R"("startMonitoringOnLaunch": false)");
    /// Starts `mirrolet` once more and returns the exit status of that start.
    int startOnceMore();
    std::optional<xcb_window_t> titled(const std::string& title);
    xcb_window_t awaitWindow(const std::string& title = "Mirrolet Settings");
    /// Opens a page of the settings window, "General" or "PiP", by its tab.
    void choosePage(const std::string& name);

    std::vector<Element> elements() { return reader.read(program->pid()); }
    std::optional<Element> seek(const std::string& role, const std::string& name);
    /// Waits until the program shows a control of this role and name, and returns the control.
    Element find(const std::string& role, const std::string& name);
    void click(const Element& element);
    void click(const std::string& role, const std::string& name) { click(find(role, name)); }
    /// Presses Tab until the control of this role and name has the focus.
    void tabTo(const std::string& role, const std::string& name);

    /// Waits until the settings file contains the text, such as `"pollInterval": 5`.
    void awaitSaved(const std::string& text);
    [[nodiscard]] std::filesystem::path autostartFile() const;

    harness::ScreenReader reader{bus};
    std::shared_ptr<harness::Sandbox> home = std::make_shared<harness::Sandbox>();
};

} // namespace mirrolet
