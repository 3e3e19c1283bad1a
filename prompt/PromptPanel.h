#pragma once

#include "platform/appkit/NSPanel.h"
#include "platform/foundation/NSTimer.h"

#include <functional>
#include <memory>
#include <string>

namespace mirrolet {

/// The small floating panel that offers to mirror a window. The user accepts or declines once. If the user
/// does not answer in time, the panel declines. The owner releases the panel after the answer. Main thread
/// only.
class PromptPanel : public platform::NSPanel {
  public:
    /// Builds a hidden panel. `ownerName` is the name of the window's application, and may have any length.
    static std::shared_ptr<PromptPanel> make(const std::string& ownerName, bool isLikelyCall);

    /// The owner sets both callbacks. After an answer the panel closes and then calls one of them.
    std::function<void()> onAccept;
    std::function<void()> onDecline;

    /// Shows the panel and starts the time-out. Calling show() once more asks the question again.
    void show();
    /// Closes the panel without an answer.
    void dismiss();
    /// Takes the answer from a button or from the time-out. Only the first answer has an effect.
    void respond(bool accepted);

    [[nodiscard]] bool canBecomeKeyWindow() const override { return true; }
    [[nodiscard]] bool canBecomeMainWindow() const override { return false; }

  private:
    PromptPanel();

    void configure();
    void setContent(const std::string& ownerName, bool isLikelyCall);
    void place();
    void disarm();

    std::shared_ptr<platform::NSTimer> autoDismissTimer;
    bool didRespond = false;
};

} // namespace mirrolet
