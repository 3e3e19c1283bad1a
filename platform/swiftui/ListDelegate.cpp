#include "platform/swiftui/ListDelegate.h"

#include "platform/appkit/ImageDrawing.h"
#include "platform/swiftui/ListModel.h"
#include "platform/swiftui/Theme.h"

#include <QKeyEvent>
#include <QListView>
#include <QMouseEvent>

#include <algorithm>

namespace mirrolet::platform::swiftui {
namespace {

constexpr int boxSide = 15;
constexpr int inset = 4;
constexpr int gap = 8;

/// Returns a pointer and not a reference, because newer compilers would wrongly warn about a dangling
/// reference.
const List::Row* rowAt(const QModelIndex& index) {
    return &static_cast<const ListModel*>(index.model())->row(index.row());
}

QRect square(const QRect& row, int left, int side) {
    return {left, row.top() + (row.height() - side) / 2, side, side};
}

} // namespace

ListDelegate::ListDelegate(QListView& view, int imageSide)
    : QStyledItemDelegate(&view), view(view), imageSide(imageSide) {
    loader.setInterval(0);
    connect(&loader, &QTimer::timeout, this, [this] { loadNext(); });
}

QSize ListDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& /*index*/) const {
    return {0, std::max(imageSide + 8, option.fontMetrics.height() + 8)};
}

void ListDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                         const QModelIndex& index) const {
    painter->save();
    const Theme theme(view);
    const QRect row = option.rect;
    painter->setRenderHint(QPainter::Antialiasing);
    if (option.state.testFlag(QStyle::State_HasFocus))
        drawFocusRing(*painter, row, 6, withAlpha(theme.accent, 0.7));
    else if (option.state.testFlag(QStyle::State_MouseOver)) {
        painter->setPen(Qt::NoPen);
        painter->setBrush(withAlpha(theme.label, 0.06));
        painter->drawRoundedRect(row, 6, 6);
    }
    const QRect box = square(row, row.left() + inset, boxSide);
    paintCheckBox(*painter, box, index.data(Qt::CheckStateRole).toInt() == Qt::Checked);
    const QRect image = square(row, box.right() + 1 + gap, imageSide);
    paintImage(*painter, image, index);
    const QRect label = row.adjusted(image.right() + 1 + gap - row.left(), 0, -inset, 0);
    painter->setFont(option.font);
    painter->setPen(theme.label);
    painter->drawText(label, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                      option.fontMetrics.elidedText(index.data().toString(), Qt::ElideRight, label.width()));
    painter->restore();
}

void ListDelegate::paintCheckBox(QPainter& painter, const QRectF& box, bool isOn) const {
    const Theme theme(view);
    drawBox(painter, box, 4, isOn ? theme.accent : theme.controlFill,
            isOn ? withAlpha(Qt::black, 0.12) : withAlpha(theme.label, 0.35));
    if (!isOn)
        return;
    painter.setPen(QPen(Qt::white, 1.8, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    const QPointF corner = box.topLeft();
    painter.drawPolyline(
        QPolygonF{corner + QPointF(4, 7.8), corner + QPointF(6.6, 10.4), corner + QPointF(11, 4.8)});
}

void ListDelegate::paintImage(QPainter& painter, const QRect& place, const QModelIndex& index) const {
    const List::Row& row = *rowAt(index);
    if (const auto known = images.find(row.id); known != images.end()) {
        painter.drawPixmap(place, known->second);
        return;
    }
    if (!row.image)
        return;
    wanted.emplace_back(index);
    loader.start();
}

void ListDelegate::loadNext() {
    // A row may have been filtered or scrolled away since it asked for its picture. Such a row is skipped. It
    // asks again when it is drawn again.
    while (!wanted.empty()) {
        const QPersistentModelIndex index = wanted.front();
        wanted.pop_front();
        if (!index.isValid() || !view.viewport()->rect().intersects(view.visualRect(index)))
            continue;
        const List::Row& row = *rowAt(index);
        if (images.count(row.id) != 0)
            continue;
        const double scale = view.devicePixelRatioF();
        const int pixels = qRound(imageSide * scale);
        QImage image = renderedImage(*row.image, {pixels, pixels}, Theme(view).label);
        image.setDevicePixelRatio(scale);
        images.emplace(row.id, QPixmap::fromImage(std::move(image)));
        view.update(index);
        return;
    }
    loader.stop();
}

bool ListDelegate::editorEvent(QEvent* event, QAbstractItemModel* model, const QStyleOptionViewItem& option,
                               const QModelIndex& index) {
    bool toggles = false;
    if (event->type() == QEvent::MouseButtonRelease) {
        const auto& mouse = static_cast<const QMouseEvent&>(*event);
        toggles = mouse.button() == Qt::LeftButton && option.rect.contains(mouse.position().toPoint());
    } else if (event->type() == QEvent::KeyPress) {
        const auto key = static_cast<const QKeyEvent&>(*event).key();
        toggles = key == Qt::Key_Space || key == Qt::Key_Select;
    }
    if (!toggles)
        return false;
    const bool isOn = index.data(Qt::CheckStateRole).toInt() == Qt::Checked;
    return model->setData(index, isOn ? Qt::Unchecked : Qt::Checked, Qt::CheckStateRole);
}

} // namespace mirrolet::platform::swiftui
