#include "platform/swiftui/List.h"

#include "platform/swiftui/Follow.h"
#include "platform/swiftui/ListDelegate.h"
#include "platform/swiftui/ListModel.h"
#include "platform/swiftui/ListWidget.h"

namespace mirrolet::platform::swiftui {

View List::body() const {
    return View([list = *this](const BuildContext&) {
        auto* widget = new ListWidget;
        auto* model = new ListModel(widget, list.source);
        widget->setModel(model);
        widget->setItemDelegate(new ListDelegate(*widget, static_cast<int>(list.source.imageSide)));
        widget->setAccessibleName(QString::fromStdString(list.name));
        model->reload();
        for (const Observation& changes : list.source.rowChanges)
            whenChanged(*widget, changes, [model] { model->reload(); });
        whenChanged(*widget, list.source.checkChanges, [model] { model->refreshChecks(); });
        return widget;
    });
}

} // namespace mirrolet::platform::swiftui
