#include "platform/swiftui/SwitchWidget.h"

#include "platform/swiftui/Theme.h"

namespace mirrolet::platform::swiftui {
namespace {
constexpr QSize switchSize{36, 20};
constexpr int switchRingRoom = 2;
} // namespace

SwitchWidget::SwitchWidget() {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setFocusPolicy(Qt::StrongFocus);
}

QSize SwitchWidget::sizeHint() const {
    return switchSize.grownBy({switchRingRoom, switchRingRoom, switchRingRoom, switchRingRoom});
}

void SwitchWidget::focusInEvent(QFocusEvent* event) {
    focusVisibility.focusIn(*event);
    QCheckBox::focusInEvent(event);
}

void SwitchWidget::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    const Theme theme(*this);
    const QRectF track =
        QRectF(rect()).adjusted(switchRingRoom, switchRingRoom, -switchRingRoom, -switchRingRoom);
    const double radius = track.height() / 2;
    const QColor off = withAlpha(theme.label, theme.dark ? 0.22 : 0.2);
    QColor fill = isChecked() ? theme.accent : off;
    if (isDown())
        fill = isChecked() ? mixed(fill, Qt::black, 0.14) : withAlpha(theme.label, 0.32);
    drawBox(painter, track, radius, fill, withAlpha(Qt::black, 0.1));
    const double side = track.height() - 4;
    const double left = isChecked() ? track.right() - side - 2 : track.left() + 2;
    painter.setPen(QPen(withAlpha(Qt::black, 0.15), 0.5));
    painter.setBrush(Qt::white);
    painter.drawEllipse(QRectF(left, track.top() + 2, side, side));
    if (focusVisibility.shows(*this))
        drawFocusRing(painter, QRectF(rect()).adjusted(-1, -1, 1, 1), radius + 3,
                      withAlpha(theme.accent, 0.7));
}

} // namespace mirrolet::platform::swiftui
