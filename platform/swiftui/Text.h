#pragma once

#include "platform/swiftui/View.h"

#include <string>
#include <vector>

namespace mirrolet::platform::swiftui {

enum class Font { body, headline, subheadline };
enum class ForegroundStyle { primary, secondary };
enum class TextAlignment { leading, center };

/// Plain text, never interpreted as markup. If there is too little room, the text first gets a little
/// smaller. Then each part that elidable() has marked is shortened in the middle. Only then does the text
/// shrink further. This order keeps the text readable for as long as possible.
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
    /// Keeps this text at its ideal height, so that its neighbours shrink first.
    [[nodiscard]] Text fixedVertically() const;
    /// Allows the text to be shortened in the middle if there is too little room.
    [[nodiscard]] Text elidable() const;
    /// Appends a text. The result has the font, the colour and the alignment of `left`.
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
