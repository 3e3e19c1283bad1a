#include "platform/swiftui/NSHostingView.h"

#include "platform/swiftui/MaterialWidget.h"

#include <QEvent>
#include <QPointer>
#include <QWidget>

namespace mirrolet::platform {

namespace {

/// Gives the focus to the root widget when its window is first shown. Qt would give the focus to the first
/// button, and the Space key, pressed by accident, would then press that button. Tab moves from the root to
/// the first control.
class InitialFocus : public QObject {
  public:
    explicit InitialFocus(QWidget& root) : QObject(&root), root(root) { root.installEventFilter(this); }

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Show && !root.window()->focusWidget())
            root.setFocus();
        return QObject::eventFilter(watched, event);
    }

  private:
    QWidget& root;
};

} // namespace

struct NSHostingView::Root {
    QPointer<QWidget> widget;
};

NSHostingView::NSHostingView(const swiftui::View& rootView) : root(std::make_unique<Root>()) {
    QWidget* widget = rootView.build({});
    new InitialFocus(*widget); // The widget owns the object.
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
    // The widget is deleted later, because the code of one of its controls may be running now.
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
