#include "platform/swiftui/Switching.h"

#include "platform/swiftui/Follow.h"

#include <QVBoxLayout>

namespace mirrolet::platform::swiftui {
namespace {

void replaceContent(QWidget& place, QWidget* content) {
    QLayout& layout = *place.layout();
    if (QLayoutItem* old = layout.takeAt(0)) {
        // Only the layout item is deleted at once. The widget is deleted on a later turn of the event loop,
        // because one of its controls may be running its own code now.
        old->widget()->hide();
        old->widget()->deleteLater();
        delete old;
    }
    layout.addWidget(content);
    content->show();
}

} // namespace

View switchingView(Observation changes, std::function<NextContent()> makeSource) {
    return View(
        [changes = std::move(changes), makeSource = std::move(makeSource)](const BuildContext& context) {
            auto* place = new QWidget;
            auto* layout = new QVBoxLayout(place);
            layout->setContentsMargins(0, 0, 0, 0);
            follow(*place, changes, [place, context, next = makeSource()] {
                if (const auto content = next())
                    replaceContent(*place, content->build(context));
            });
            return place;
        });
}

} // namespace mirrolet::platform::swiftui
