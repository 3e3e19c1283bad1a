#include "platform/swiftui/TabBarWidget.h"

#include "platform/appkit/ImageDrawing.h"
#include "platform/swiftui/Theme.h"

#include <QFontMetrics>
#include <QMouseEvent>

#include <algorithm>

namespace mirrolet::platform::swiftui {
namespace {
constexpr int symbolSide = 20;
constexpr int tabInset = 6;
} // namespace

TabBarWidget::TabBarWidget() {
    setDrawBase(false);
    setExpanding(false);
    setUsesScrollButtons(false);
    setMouseTracking(true);
    setElideMode(Qt::ElideNone);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setFocusPolicy(Qt::TabFocus);
}

void TabBarWidget::addSymbolTab(const std::string& label, const std::string& systemImage) {
    symbols.push_back(NSImage::systemSymbol(systemImage));
    addTab(QString::fromStdString(label));
}

QSize TabBarWidget::tabSizeHint(int index) const {
    const QFontMetrics metrics(resolvedFont(Font::subheadline));
    return {std::max(64, metrics.horizontalAdvance(tabText(index)) + 28),
            symbolSide + metrics.height() + 3 * tabInset};
}

void TabBarWidget::focusInEvent(QFocusEvent* event) {
    focusVisibility.focusIn(*event);
    QTabBar::focusInEvent(event);
    update();
}

void TabBarWidget::setHovered(int index) {
    if (hovered == index)
        return;
    hovered = index;
    update();
}

void TabBarWidget::mouseMoveEvent(QMouseEvent* event) {
    setHovered(tabAt(event->position().toPoint()));
    QTabBar::mouseMoveEvent(event);
}

void TabBarWidget::leaveEvent(QEvent* event) {
    setHovered(-1);
    QTabBar::leaveEvent(event);
}

void TabBarWidget::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    for (int index = 0; index < count(); ++index)
        paintTab(painter, index);
}

void TabBarWidget::paintTab(QPainter& painter, int index) {
    const Theme theme(*this);
    const bool chosen = index == currentIndex();
    const QRect tab = tabRect(index).adjusted(2, 3, -2, -3);
    if (chosen || index == hovered) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(withAlpha(theme.label, chosen ? 0.1 : 0.05));
        painter.drawRoundedRect(tab, 7, 7);
    }
    if (chosen && focusVisibility.shows(*this))
        drawFocusRing(painter, tab, 7, theme.accent);
    const QColor ink =
        chosen ? (theme.dark ? mixed(theme.accent, Qt::white, 0.45) : theme.accent) : theme.secondaryLabel;
    if (const auto& symbol = symbols.at(static_cast<std::size_t>(index))) {
        const int pixels = qRound(symbolSide * devicePixelRatioF());
        const QRect place(tab.center().x() - symbolSide / 2 + 1, tab.top() + tabInset - 2, symbolSide,
                          symbolSide);
        painter.drawImage(place, renderedImage(*symbol, {pixels, pixels}, ink));
    }
    painter.setFont(resolvedFont(Font::subheadline));
    painter.setPen(chosen ? ink : theme.label);
    painter.drawText(tab.adjusted(0, 0, 0, -3), Qt::AlignHCenter | Qt::AlignBottom, tabText(index));
}

} // namespace mirrolet::platform::swiftui
