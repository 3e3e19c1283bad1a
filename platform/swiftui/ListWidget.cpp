#include "platform/swiftui/ListWidget.h"

#include "platform/swiftui/ScrollBarWidget.h"

#include <QFocusEvent>

namespace mirrolet::platform::swiftui {

ListWidget::ListWidget() {
    setFrameShape(QFrame::NoFrame);
    setUniformItemSizes(true); // Saves measuring each of a thousand rows.
    setSelectionMode(QAbstractItemView::NoSelection);
    setMouseTracking(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setTabKeyNavigation(false);
    setVerticalScrollBar(new ScrollBarWidget);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    viewport()->setAutoFillBackground(false);
}

void ListWidget::focusInEvent(QFocusEvent* event) {
    QListView::focusInEvent(event);
    if (event->reason() != Qt::MouseFocusReason && !currentIndex().isValid() && model() &&
        model()->rowCount() > 0)
        setCurrentIndex(model()->index(0, 0)); // The arrow keys need a row to start from.
}

} // namespace mirrolet::platform::swiftui
