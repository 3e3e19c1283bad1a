#include "platform/swiftui/NSViewRepresentable.h"

#include "platform/appkit/NSViewWidget.h"
#include "platform/swiftui/FocusVisibility.h"
#include "platform/swiftui/Follow.h"
#include "platform/swiftui/Theme.h"

#include <QAccessibleWidget>

namespace mirrolet::platform::swiftui {
namespace {

/// Shows an NSView. Adds the focus ring and the description for assistive software.
class RepresentedWidget : public NSViewWidget {
  public:
    explicit RepresentedWidget(const std::shared_ptr<NSView>& view) : NSViewWidget(view), represented(view) {
        setFixedSize(sizeHint());
        describe();
    }

  protected:
    void viewChanged() override {
        NSViewWidget::viewChanged();
        describe();
    }
    void paintEvent(QPaintEvent* event) override {
        NSViewWidget::paintEvent(event);
        QPainter painter(this);
        if (focusVisibility.shows(*this))
            drawFocusRing(painter, rect(), 6, Theme(*this).accent);
    }
    void focusInEvent(QFocusEvent* event) override {
        focusVisibility.focusIn(*event);
        NSViewWidget::focusInEvent(event);
        update();
    }
    void focusOutEvent(QFocusEvent* event) override {
        NSViewWidget::focusOutEvent(event);
        update();
    }

  private:
    /// Sets the accessible description to the view's value, because Qt has no text value for a button. An
    /// unchanged description is not set again, because setting it notifies assistive software each time.
    void describe() {
        setToolTip(QString::fromStdString(represented->toolTip));
        const auto value = QString::fromStdString(represented->accessibilityValue);
        if (value != accessibleDescription())
            setAccessibleDescription(value);
    }

    std::shared_ptr<NSView> represented;
    FocusVisibility focusVisibility;
};

/// Tells assistive software that the widget is a button. By default Qt calls the widget a filler, and screen
/// readers skip fillers.
QAccessibleInterface* accessibleButton(const QString& /*className*/, QObject* object) {
    auto* widget = dynamic_cast<RepresentedWidget*>(object);
    return widget ? new QAccessibleWidget(widget, QAccessible::Button) : nullptr;
}

} // namespace

QWidget* representedWidget(const RepresentedView& represented) {
    // Only the first call has an effect.
    QAccessible::installFactory(accessibleButton);
    auto* widget = new RepresentedWidget(represented.view);
    const auto refresh = [view = represented.view, update = represented.update] { update(*view); };
    refresh();
    for (const Observation& changes : represented.changes)
        whenChanged(*widget, changes, refresh);
    return widget;
}

} // namespace mirrolet::platform::swiftui
