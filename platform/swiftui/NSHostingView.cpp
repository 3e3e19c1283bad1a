#include "platform/swiftui/NSHostingView.h"

#include "platform/swiftui/MaterialWidget.h"

#include <QPointer>
#include <QWidget>

namespace mirrolet::platform {

struct NSHostingView::Root {
    QPointer<QWidget> widget;
};

NSHostingView::NSHostingView(const swiftui::View& rootView) : root(std::make_unique<Root>()) {
    QWidget* widget = rootView.build({});
    // The root itself has the keyboard at first: a stray Space must not press the first button.
    widget->setFocus();
    if (const auto* material = dynamic_cast<swiftui::MaterialWidget*>(widget)) {
        CALayer rounded = layer();
        rounded.cornerRadius = material->cornerRadius();
        setLayer(rounded);
    }
    root->widget = widget;
}

NSHostingView::~NSHostingView() {
    if (!root->widget)
        return;
    // The end of the view may come out of one of its own controls, which is still on the stack then.
    root->widget->hide();
    root->widget->setParent(nullptr);
    root->widget->deleteLater();
}

std::optional<NSSize> NSHostingView::intrinsicContentSize() const {
    if (!root->widget)
        return std::nullopt;
    const QSize size = root->widget->sizeHint().expandedTo(root->widget->minimumSize());
    return NSSize{static_cast<CGFloat>(size.width()), static_cast<CGFloat>(size.height())};
}

QWidget* NSHostingView::hostedWidget() {
    return root->widget;
}

} // namespace mirrolet::platform
