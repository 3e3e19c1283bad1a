#include "platform/swiftui/TextFieldWidget.h"

#include "platform/swiftui/Theme.h"

#include <QEvent>
#include <QFontMetrics>
#include <QKeyEvent>

#include <algorithm>

namespace mirrolet::platform::swiftui {

TextFieldWidget::TextFieldWidget() {
    setFrame(false); // This class draws the frame itself.
    setTextMargins(8, 0, 8, 0);
    setClearButtonEnabled(true);
    QPalette transparent = palette();
    transparent.setBrush(QPalette::Base, Qt::transparent);
    setPalette(transparent);
    adoptPlaceholderColor();
}

/// Sets the colour of the placeholder text. Some desktops' palettes lack this colour, and Qt would then use
/// black even on a dark field.
void TextFieldWidget::adoptPlaceholderColor() {
    const QColor wanted = withAlpha(Theme(*this).label, 0.55);
    QPalette own = palette();
    if (own.color(QPalette::PlaceholderText) == wanted)
        return;
    own.setColor(QPalette::PlaceholderText, wanted);
    setPalette(own);
}

void TextFieldWidget::changeEvent(QEvent* event) {
    QLineEdit::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        adoptPlaceholderColor();
}

QSize TextFieldWidget::sizeHint() const {
    return {120, std::max(24, QFontMetrics(resolvedFont(Font::body)).height() + 8)};
}

void TextFieldWidget::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape && !text().isEmpty())
        clear();
    else
        QLineEdit::keyPressEvent(event);
}

void TextFieldWidget::paintEvent(QPaintEvent* event) {
    {
        QPainter painter(this);
        const Theme theme(*this);
        const QColor fill = theme.dark ? withAlpha(Qt::black, 0.25) : QColor(Qt::white);
        drawBox(painter, rect(), 6, fill, withAlpha(theme.label, 0.18));
        if (hasFocus())
            drawFocusRing(painter, rect(), 6, theme.accent);
    }
    QLineEdit::paintEvent(event);
}

} // namespace mirrolet::platform::swiftui
