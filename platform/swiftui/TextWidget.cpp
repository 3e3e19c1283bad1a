#include "platform/swiftui/TextWidget.h"

#include "platform/swiftui/Theme.h"

#include <QEvent>
#include <QFontMetricsF>
#include <QPainter>
#include <QTextLayout>
#include <QTextOption>

#include <algorithm>
#include <cmath>

namespace mirrolet::platform::swiftui {
namespace {

/// The largest number of characters of a part that Text::elidable() has marked. A longer part is shortened,
/// because a name from another program may be longer than anybody would read.
constexpr qsizetype longestPiece = 400;
constexpr int mildPercent = 92;
constexpr int smallestPercent = 50;
constexpr int percentStep = 4;

QString middleElided(const QString& text, qsizetype kept) {
    if (text.size() <= kept)
        return text;
    qsizetype head = (kept + 1) / 2;
    qsizetype tail = kept - head;
    // A character may consist of two code units. The cut must not fall between the two.
    if (head > 0 && text.at(head - 1).isHighSurrogate())
        --head;
    if (tail > 0 && text.at(text.size() - tail).isLowSurrogate())
        --tail;
    return text.first(head).trimmed() + QChar(0x2026) + text.last(tail).trimmed();
}

/// Replaces control characters and line breaks by spaces. A text from another program must not add line
/// breaks to the layout.
QString displayable(const std::string& text) {
    QString result = QString::fromStdString(text);
    for (QChar& character : result) {
        const auto category = character.category();
        if (category == QChar::Other_Control || category == QChar::Separator_Line ||
            category == QChar::Separator_Paragraph)
            character = QLatin1Char(' ');
    }
    return middleElided(result, longestPiece);
}

} // namespace

TextWidget::TextWidget(const std::vector<Text::Run>& runs, Font font, ForegroundStyle style,
                       TextAlignment alignment)
    : role(font), style(style), textAlignment(alignment) {
    QString whole;
    for (const auto& run : runs) {
        whole += QString::fromStdString(run.text);
        pieces.push_back(
            {run.elidable ? displayable(run.text) : QString::fromStdString(run.text), run.elidable});
        if (run.elidable)
            longestElidable = std::max(longestElidable, pieces.back().text.size());
    }
    setTextFormat(Qt::PlainText);
    setText(whole);
    setWordWrap(true);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);
}

QFont TextWidget::scaledFont(double scale) const {
    QFont font = resolvedFont(role);
    if (font.pointSizeF() > 0)
        font.setPointSizeF(font.pointSizeF() * scale);
    else
        font.setPixelSize(static_cast<int>(std::lround(font.pixelSize() * scale)));
    return font;
}

namespace {

/// Places the lines of the text below one another from y = 0, and returns their total height.
double layOut(QTextLayout& layout, double width, TextAlignment alignment) {
    QTextOption option(alignment == TextAlignment::center ? Qt::AlignHCenter : Qt::AlignLeft);
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    layout.beginLayout();
    double y = 0;
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(width);
        line.setPosition({0, y});
        y += line.height();
    }
    layout.endLayout();
    return y;
}

} // namespace

double TextWidget::heightOf(const QString& text, double width, double scale) const {
    QTextLayout layout(text, scaledFont(scale));
    return layOut(layout, width, textAlignment);
}

QSize TextWidget::sizeHint() const {
    const QFontMetricsF metrics(scaledFont(1));
    const double width = metrics.horizontalAdvance(shortened(longestElidable));
    return {static_cast<int>(std::ceil(width)) + 1, static_cast<int>(std::ceil(metrics.height()))};
}

QSize TextWidget::minimumSizeHint() const {
    return {0, static_cast<int>(std::ceil(QFontMetricsF(scaledFont(1)).height()))};
}

int TextWidget::heightForWidth(int width) const {
    return static_cast<int>(std::ceil(heightOf(shortened(longestElidable), width, 1)));
}

bool TextWidget::fits(const QString& text, double scale) const {
    return heightOf(text, width(), scale) <= height() + 0.5;
}

QString TextWidget::shortened(qsizetype charactersKept) const {
    QString result;
    for (const Piece& piece : pieces)
        result += piece.elidable ? middleElided(piece.text, charactersKept) : piece.text;
    return result;
}

std::optional<QString> TextWidget::longestThatFits(double scale) const {
    qsizetype low = std::min<qsizetype>(4, longestElidable);
    qsizetype high = longestElidable;
    if (!fits(shortened(low), scale))
        return std::nullopt;
    while (low < high) {
        const qsizetype middle = (low + high + 1) / 2;
        if (fits(shortened(middle), scale))
            low = middle;
        else
            high = middle - 1;
    }
    return shortened(low);
}

TextWidget::Fit TextWidget::fitted() const {
    const QString whole = shortened(longestElidable);
    for (int percent = 100; percent >= mildPercent; percent -= percentStep) {
        if (fits(whole, percent / 100.0))
            return {whole, percent / 100.0};
    }
    for (int percent = mildPercent; percent >= smallestPercent; percent -= percentStep) {
        if (auto text = longestThatFits(percent / 100.0))
            return {*text, percent / 100.0};
    }
    return {whole, smallestPercent / 100.0};
}

void TextWidget::paintEvent(QPaintEvent* /*event*/) {
    if (!fit)
        fit = fitted();
    QPainter painter(this);
    const Theme theme(*this);
    painter.setPen(style == ForegroundStyle::secondary ? theme.secondaryLabel : theme.label);
    QTextLayout layout(fit->text, scaledFont(fit->scale));
    const double used = layOut(layout, width(), textAlignment);
    layout.draw(&painter, {0, std::max(0.0, (height() - used) / 2)});
}

void TextWidget::resizeEvent(QResizeEvent* event) {
    fit.reset();
    QLabel::resizeEvent(event);
}

void TextWidget::changeEvent(QEvent* event) {
    if (event->type() == QEvent::ApplicationFontChange || event->type() == QEvent::FontChange) {
        fit.reset();
        updateGeometry();
        update();
    }
    QLabel::changeEvent(event);
}

} // namespace mirrolet::platform::swiftui
