#pragma once

#include "platform/appkit/NSPanel.h"
#include "platform/foundation/NSTimer.h"

#include <functional>
#include <memory>
#include <string>

namespace mirrolet {

/// The small floating panel that offers to mirror a window. It asks once and answers once: accepted, or
/// declined (a time-out declines too). Its owner drops it after the answer. Main thread only.
class PromptPanel : public platform::NSPanel {
  public:
    /// Builds the panel without showing it. `ownerName` is the name of the window's application, of any
    /// length.
    static std::shared_ptr<PromptPanel> make(const std::string& ownerName, bool isLikelyCall);

    /// Run after the panel has closed. Set by the owner.
    std::function<void()> onAccept;
    std::function<void()> onDecline;

    /// Shows the panel and arms the time-out; showing it again asks anew.
    void show();
    /// Closes the panel without an answer.
    void dismiss();
    /// The single answer gate of both buttons and of the time-out: everything after the first answer is
    /// ignored.
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
