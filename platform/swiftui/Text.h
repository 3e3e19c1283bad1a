#pragma once

#include "platform/swiftui/View.h"

#include <string>
#include <vector>

namespace mirrolet::platform::swiftui {

enum class Font { body, headline, subheadline };
enum class ForegroundStyle { primary, secondary };
enum class TextAlignment { leading, center };

/// Plain text, never interpreted as markup. Where there is too little room, the text first gets a little
/// smaller, then the parts marked as elidable lose their middle, and only then the text shrinks further. So
/// all that it says stays readable as long as possible.
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
    /// Gives its ideal height precedence over that of its neighbours.
    [[nodiscard]] Text fixedVertically() const;
    /// The middle of this text may be left out.
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
