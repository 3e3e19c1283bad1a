#include "platform/swiftui/View.h"

#include "platform/swiftui/AlertPresenter.h"
#include "platform/swiftui/ColumnLayout.h"
#include "platform/swiftui/Follow.h"
#include "platform/swiftui/MaterialWidget.h"

#include <QEvent>
#include <QVBoxLayout>
#include <QWidget>

#include <cmath>

namespace mirrolet::platform::swiftui {
namespace {

int pixels(double points) {
    return static_cast<int>(std::lround(points));
}

/// Gives the container a column layout with the content as its only item, and returns the container.
QWidget* wrapped(QWidget* container, QWidget* content) {
    auto* layout = new ColumnLayout(0);
    container->setLayout(layout);
    layout->addWidget(content);
    return container;
}

/// Makes the content fill the container except for the margins, and returns the container.
QWidget* stretched(QWidget* container, QWidget* content, QMargins margins) {
    auto* layout = new QVBoxLayout(container);
    layout->setContentsMargins(margins);
    layout->addWidget(content);
    return container;
}

/// An event filter that calls a function when a widget comes on screen.
class AppearanceFilter : public QObject {
  public:
    AppearanceFilter(QWidget* watched, std::function<void()> appeared)
        : QObject(watched), appeared(std::move(appeared)) {
        watched->installEventFilter(this);
    }

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Show && !event->spontaneous())
            appeared();
        return QObject::eventFilter(watched, event);
    }

  private:
    std::function<void()> appeared;
};

} // namespace

View View::padding(double points) const {
    return View([view = *this, edge = pixels(points)](const BuildContext& context) {
        return stretched(new QWidget, view.build(context), QMargins(edge, edge, edge, edge));
    });
}

View View::verticalPadding(double points) const {
    return View([view = *this, edge = pixels(points)](const BuildContext& context) {
        return stretched(new QWidget, view.build(context), QMargins(0, edge, 0, edge));
    });
}

View View::frame(double width, double height) const {
    return View([view = *this, size = QSize(pixels(width), pixels(height))](const BuildContext& context) {
        QWidget* framed = wrapped(new QWidget, view.build(context));
        framed->setFixedSize(size);
        return framed;
    });
}

View View::minHeight(double height) const {
    return View([view = *this, height](const BuildContext& context) {
        QWidget* widget = view.build(context);
        widget->setMinimumHeight(pixels(height));
        return widget;
    });
}

View View::fullWidth() const {
    return View([view = *this](const BuildContext& context) {
        QWidget* wide = wrapped(new QWidget, view.build(context));
        wide->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
        return wide;
    });
}

View View::background(Material /*material*/, double cornerRadius) const {
    return View([view = *this, cornerRadius](const BuildContext& context) {
        return stretched(new MaterialWidget(cornerRadius), view.build(context), QMargins());
    });
}

View View::accessibilityLabel(std::string label) const {
    return View([view = *this, label = std::move(label)](const BuildContext& context) {
        QWidget* widget = view.build(context);
        widget->setAccessibleName(QString::fromStdString(label));
        return widget;
    });
}

View View::onChange(Observation changes, std::function<void()> action) const {
    return View([view = *this, changes = std::move(changes),
                 action = std::move(action)](const BuildContext& context) {
        QWidget* widget = view.build(context);
        whenChanged(*widget, changes, action);
        return widget;
    });
}

View View::alert(std::string title, Binding<std::optional<std::string>> message) const {
    return View(
        [view = *this, title = std::move(title), message = std::move(message)](const BuildContext& context) {
            QWidget* widget = view.build(context);
            new AlertPresenter(*widget, title, message); // The widget owns the presenter.
            return widget;
        });
}

View View::task(std::function<void()> action) const {
    return View([view = *this, action = std::move(action)](const BuildContext& context) {
        QWidget* widget = view.build(context);
        new AppearanceFilter(widget, action); // The widget owns the filter.
        return widget;
    });
}

} // namespace mirrolet::platform::swiftui
