#include "platform/swiftui/Text.h"

#include "platform/swiftui/ColumnLayout.h"
#include "platform/swiftui/TextWidget.h"

namespace mirrolet::platform::swiftui {

Text Text::font(Font value) const {
    Text result = *this;
    result.textFont = value;
    return result;
}

Text Text::foregroundStyle(ForegroundStyle value) const {
    Text result = *this;
    result.style = value;
    return result;
}

Text Text::multilineTextAlignment(TextAlignment value) const {
    Text result = *this;
    result.alignment = value;
    return result;
}

Text Text::fixedVertically() const {
    Text result = *this;
    result.keepsIdealHeight = true;
    return result;
}

Text Text::elidable() const {
    Text result = *this;
    for (Run& run : result.runs)
        run.elidable = true;
    return result;
}

Text operator+(Text left, const Text& right) {
    left.runs.insert(left.runs.end(), right.runs.begin(), right.runs.end());
    return left;
}

View Text::body() const {
    return View([text = *this](const BuildContext&) -> QWidget* {
        auto* widget = new TextWidget(text.runs, text.textFont, text.style, text.alignment);
        ColumnLayout::setPrecedence(*widget, text.keepsIdealHeight ? 1 : 0);
        return widget;
    });
}

} // namespace mirrolet::platform::swiftui
