#include "platform/swiftui/TabView.h"

#include "platform/swiftui/TabBarWidget.h"

#include <QStackedWidget>
#include <QVBoxLayout>

namespace mirrolet::platform::swiftui {

View TabView::body() const {
    return View([tabs = *this](const BuildContext& context) {
        auto* widget = new QWidget;
        widget->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
        auto* layout = new QVBoxLayout(widget);
        layout->setContentsMargins(0, 4, 0, 0);
        layout->setSpacing(0);
        auto* bar = new TabBarWidget;
        auto* stack = new QStackedWidget;
        for (const Tab& tab : tabs.pages) {
            bar->addSymbolTab(tab.label, tab.systemImage);
            stack->addWidget(tab.content.build(context));
        }
        QObject::connect(bar, &QTabBar::currentChanged, stack, &QStackedWidget::setCurrentIndex);
        layout->addWidget(bar, 0, Qt::AlignHCenter);
        layout->addWidget(stack, 1);
        return widget;
    });
}

} // namespace mirrolet::platform::swiftui
