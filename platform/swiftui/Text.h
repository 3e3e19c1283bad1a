#pragma once

#include "platform/swiftui/View.h"

#include <string>
#include <vector>

namespace mirrolet::platform::swiftui {

enum class Font { body, headline, subheadline };
enum class ForegroundStyle { primary, secondary };
enum class TextAlignment { leading, center };

/// Plain text, never interpreted as markup. If there is too little room, the text first gets a little
/// smaller. Then the parts marked as elidable lose their middle. Only then does the text shrink further. In
/// this order all that the text says stays readable as long as possible.
class Text : public Modifiable<Text> {
  public:
    struct Run {
        std::string text;
        bool elidable = false;
    };

    explicit Text(std::string text) : runs{{std::move(text), false}} {}

    [[nodiscard]] Text font(Font value) const;
    [[nodiscard]] Text foregroundStyle(ForegroundStyle value) const;
    [[nodiscard]] Text multilineTextAlignment(TextAlignment value) const;
    /// Gives this text's ideal height precedence over that of its neighbours.
    [[nodiscard]] Text fixedVertically() const;
    /// Allows the middle of this text to be left out.
    [[nodiscard]] Text elidable() const;
    /// Appends a text; the result has the look of the left one.
    friend Text operator+(Text left, const Text& right);

    [[nodiscard]] View body() const;

  private:
    std::vector<Run> runs;
    Font textFont = Font::body;
    ForegroundStyle style = ForegroundStyle::primary;
    TextAlignment alignment = TextAlignment::leading;
    bool keepsIdealHeight = false;
};

} // namespace mirrolet::platform::swiftui
