#include "platform/swiftui/ListWidget.h"

#include "platform/swiftui/ScrollBarWidget.h"

#include <QFocusEvent>

namespace mirrolet::platform::swiftui {

ListWidget::ListWidget() {
    setFrameShape(QFrame::NoFrame);
    setUniformItemSizes(true); // Qt then measures one row instead of thousands.
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
    // The arrow keys need a current row to start from.
    if (event->reason() != Qt::MouseFocusReason && !currentIndex().isValid() && model() &&
        model()->rowCount() > 0)
        setCurrentIndex(model()->index(0, 0));
}

} // namespace mirrolet::platform::swiftui
