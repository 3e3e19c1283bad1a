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

    /// Buttons in order; the first is the default one. Without any, a single "OK".
    void addButton(const std::string& title) { buttons.push_back(title); }
    /// Returns when the user has answered: NSAlertFirstButtonReturn plus the number of the button. Closing it
    /// is as the last button.
    int runModal() const;

  private:
    std::vector<std::string> buttons;
};

} // namespace mirrolet::platform
