#pragma once

#include "platform/appkit/NSPanel.h"
#include "platform/foundation/NSTimer.h"

#include <functional>
#include <memory>
#include <string>

namespace mirrolet {

/// The small floating panel that offers to mirror a window. The user accepts or declines once, and a time-out
/// declines. The owner drops the panel after the answer. Main thread only.
class PromptPanel : public platform::NSPanel {
  public:
    /// Builds a hidden panel. `ownerName` is the name of the window's application, and may have any length.
    static std::shared_ptr<PromptPanel> make(const std::string& ownerName, bool isLikelyCall);

    /// Called after the panel has closed. Set by the owner.
    std::function<void()> onAccept;
    std::function<void()> onDecline;

    /// Shows the panel and starts the time-out. A second call asks the question anew.
    void show();
    /// Closes the panel without an answer.
    void dismiss();
    /// Takes the answer of a button or of the time-out. All answers but the first are ignored.
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
