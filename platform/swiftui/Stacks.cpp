#include "platform/swiftui/Stacks.h"

#include "platform/swiftui/ColumnLayout.h"

#include <QHBoxLayout>
#include <QWidget>

#include <cmath>

namespace mirrolet::platform::swiftui {

View VStack::body() const {
    return View([stack = *this](const BuildContext& context) {
        auto* widget = new QWidget;
        auto* layout = new ColumnLayout(stack.gap);
        widget->setLayout(layout);
        for (const View& child : stack.children)
            layout->addWidget(child.build(context));
        return widget;
    });
}

View HStack::body() const {
    return View([stack = *this](const BuildContext& context) {
        auto* widget = new QWidget;
        auto* layout = new QHBoxLayout(widget);
        layout->setContentsMargins(0, 0, 0, 0);
        layout->setSpacing(static_cast<int>(std::lround(stack.gap)));
        for (const View& child : stack.children) {
            const int stretch = context.inForm && layout->count() == 0 ? 1 : 0;
            layout->addWidget(child.build(context), stretch, Qt::AlignVCenter);
        }
        return widget;
    });
}

} // namespace mirrolet::platform::swiftui
