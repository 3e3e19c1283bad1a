#pragma once

#include <string>
#include <vector>

namespace mirrolet::platform {

inline constexpr int NSAlertFirstButtonReturn = 1000;

/// A question or a message to the user. Main thread.
class NSAlert {
  public:
    enum class Style { warning = 0, informational = 1 };

    std::string messageText;
    std::string informativeText;
    Style alertStyle = Style::warning;

    /// Adds a button after the others. The first button is the default. An alert without buttons shows a
    /// single "OK".
    void addButton(const std::string& title) { buttons.push_back(title); }
    /// Shows the alert and waits for the user's answer. Returns NSAlertFirstButtonReturn plus the index of
    /// the chosen button. Closing the alert counts as choosing the last button.
    int runModal() const;

  private:
    std::vector<std::string> buttons;
};

} // namespace mirrolet::platform
