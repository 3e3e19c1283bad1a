#pragma once

#include "platform/swiftui/View.h"

#include <functional>
#include <string>

namespace mirrolet {

/// The content of the prompt: the question and its two answers.
struct PromptContentView {
    std::string appName;
    bool isLikelyCall = false;
    std::function<void()> onAccept;
    std::function<void()> onDecline;

    [[nodiscard]] platform::swiftui::View body() const;
};

} // namespace mirrolet
