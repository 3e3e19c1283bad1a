#include "platform/swiftui/ColumnLayout.h"

#include <QVariant>
#include <QWidget>

#include <algorithm>
#include <cmath>
#include <numeric>

namespace mirrolet::platform::swiftui {
namespace {

constexpr const char* precedenceProperty = "mirrolet.precedence";

int precedenceOf(const QLayoutItem& item) {
    const auto* widget = item.widget();
    return widget ? widget->property(precedenceProperty).toInt() : 0;
}

bool fillsWidth(const QLayoutItem& item) {
    return item.expandingDirections().testFlag(Qt::Horizontal);
}

} // namespace

ColumnLayout::ColumnLayout(double spacing, Placement placement) : placement(placement) {
    setSpacing(static_cast<int>(std::lround(spacing)));
    setContentsMargins(0, 0, 0, 0);
}

ColumnLayout::~ColumnLayout() = default;

void ColumnLayout::setPrecedence(QWidget& widget, int precedence) {
    widget.setProperty(precedenceProperty, precedence);
}

void ColumnLayout::addItem(QLayoutItem* item) {
    items.emplace_back(item);
    invalidate();
}

QLayoutItem* ColumnLayout::itemAt(int index) const {
    return index >= 0 && index < count() ? items[static_cast<std::size_t>(index)].get() : nullptr;
}

QLayoutItem* ColumnLayout::takeAt(int index) {
    if (index < 0 || index >= count())
        return nullptr;
    auto item = std::move(items[static_cast<std::size_t>(index)]);
    items.erase(items.begin() + index);
    invalidate();
    return item.release();
}

int ColumnLayout::totalSpacing() const {
    return items.empty() ? 0 : spacing() * (count() - 1);
}

int ColumnLayout::widthOf(const QLayoutItem& item, int available) const {
    const bool fills = placement == Placement::fromTop || fillsWidth(item);
    return fills ? available : std::min(item.sizeHint().width(), available);
}

std::vector<int> ColumnLayout::idealHeights(int width) const {
    std::vector<int> heights;
    for (const auto& item : items)
        heights.push_back(item->hasHeightForWidth() ? item->heightForWidth(widthOf(*item, width))
                                                    : item->sizeHint().height());
    return heights;
}

int ColumnLayout::heightForWidth(int width) const {
    const QMargins margins = contentsMargins();
    return totalOf(idealHeights(width - margins.left() - margins.right())) + margins.top() + margins.bottom();
}

QSize ColumnLayout::sizeHint() const {
    const QMargins margins = contentsMargins();
    QSize size(0, totalSpacing());
    for (const auto& item : items)
        size = {std::max(size.width(), item->sizeHint().width()), size.height() + item->sizeHint().height()};
    return size.grownBy(margins);
}

QSize ColumnLayout::minimumSize() const {
    QSize size(0, totalSpacing());
    for (const auto& item : items)
        size = {std::max(size.width(), item->minimumSize().width()),
                size.height() + item->minimumSize().height()};
    return size.grownBy(contentsMargins());
}

void ColumnLayout::compress(std::vector<int>& heights, int excess) const {
    std::vector<std::size_t> order(items.size());
    std::iota(order.begin(), order.end(), 0U);
    std::stable_sort(order.begin(), order.end(), [this](std::size_t a, std::size_t b) {
        return precedenceOf(*items[a]) < precedenceOf(*items[b]);
    });
    for (const std::size_t index : order) {
        const int given = std::clamp(heights[index] - items[index]->minimumSize().height(), 0, excess);
        heights[index] -= given;
        excess -= given;
    }
}

void ColumnLayout::expand(std::vector<int>& heights, int spare) const {
    std::vector<std::size_t> growing;
    for (std::size_t index = 0; index < items.size(); ++index) {
        if (items[index]->expandingDirections().testFlag(Qt::Vertical))
            growing.push_back(index);
    }
    for (const std::size_t index : growing)
        heights[index] += spare / static_cast<int>(growing.size());
}

std::vector<int> ColumnLayout::fittedHeights(QSize room) const {
    auto heights = idealHeights(room.width());
    const int spare = room.height() - totalOf(heights);
    if (spare < 0)
        compress(heights, -spare);
    else
        expand(heights, spare);
    return heights;
}

int ColumnLayout::totalOf(const std::vector<int>& heights) const {
    return std::accumulate(heights.begin(), heights.end(), totalSpacing());
}

void ColumnLayout::setGeometry(const QRect& bounds) {
    QLayout::setGeometry(bounds);
    const QRect room = bounds.marginsRemoved(contentsMargins());
    const auto heights = fittedHeights(room.size());
    const int spare = std::max(0, room.height() - totalOf(heights));
    int top = room.top() + (placement == Placement::fromTop ? 0 : spare / 2);
    for (std::size_t index = 0; index < items.size(); ++index) {
        const int width = widthOf(*items[index], room.width());
        items[index]->setGeometry({room.left() + (room.width() - width) / 2, top, width, heights[index]});
        top += heights[index] + spacing();
    }
}

} // namespace mirrolet::platform::swiftui
