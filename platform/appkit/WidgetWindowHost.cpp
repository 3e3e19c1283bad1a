#include "platform/appkit/WidgetWindowHost.h"

#include "platform/appkit/NSPanel.h"
#include "platform/desktop/Desktop.h"

#include <QEvent>
#include <QMoveEvent>
#include <QVBoxLayout>
#include <QWidget>
#include <QWindow>

#include <cmath>
#include <utility>

namespace mirrolet::platform {

namespace {

bool isTitled(const NSWindow& window) {
    return window.styleMask() & NSWindowStyleMask::titled;
}

Qt::WindowFlags containerFlags(const NSWindow& window) {
    if (!isTitled(window))
        return Qt::Tool | Qt::FramelessWindowHint | Qt::BypassWindowManagerHint;
    Qt::WindowFlags flags =
        Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowSystemMenuHint;
    flags.setFlag(Qt::WindowCloseButtonHint, window.styleMask() & NSWindowStyleMask::closable);
    flags.setFlag(Qt::WindowMinimizeButtonHint, window.styleMask() & NSWindowStyleMask::miniaturizable);
    return flags;
}

} // namespace

class WidgetWindowHost::Container final : public QWidget {
  public:
    Container(WidgetWindowHost& windowHost, QWidget& content, Qt::WindowFlags flags)
        : QWidget(nullptr, flags), host(windowHost), hosted(content) {
        auto* column = new QVBoxLayout(this);
        column->setContentsMargins(0, 0, 0, 0);
        column->addWidget(&content);
        content.show();
    }
    ~Container() override {
        hosted.hide();
        hosted.setParent(nullptr); // It belongs to the hosting view.
    }

  protected:
    void moveEvent(QMoveEvent* /*event*/) override {
        if (!host.panel)
            host.moved(geometry()); // Only a window manager moves the window besides us.
    }
    void resizeEvent(QResizeEvent* /*event*/) override { host.setCorners(); }

    bool event(QEvent* event) override {
        const bool handled = QWidget::event(event);
        if (event->type() == QEvent::Paint)
            host.mapped();
        return handled;
    }

    /// A click on an override-redirect window moves the focus only if the window asks for it.
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::MouseButtonPress)
            host.owner.makeKey();
        return QWidget::eventFilter(watched, event);
    }

  private:
    WidgetWindowHost& host;
    QWidget& hosted;
};

WidgetWindowHost::WidgetWindowHost(NSWindow& window)
    : WindowHost(window), container(std::make_unique<Container>(*this, *window.contentView()->hostedWidget(),
                                                                containerFlags(window))) {
    container->setWindowTitle(QString::fromStdString(window.title()));
    container->setFixedSize(toQtScreenRect(window.frame()).size());
    container->move(toQtScreenRect(window.frame()).topLeft());
    if (!isTitled(window)) {
        container->setAttribute(Qt::WA_TranslucentBackground, !window.isOpaque);
        container->setAttribute(Qt::WA_ShowWithoutActivating);
    }
}

WidgetWindowHost::~WidgetWindowHost() {
    panel.reset();
}

void WidgetWindowHost::createPanel() {
    if (panel || isTitled(owner))
        return;
    const auto number = static_cast<desktop::WindowNumber>(container->winId());
    container->windowHandle()->installEventFilter(container.get());
    awaitToolkit();
    panel = desktop::Desktop::current().makePanelWindow(number, desktop::PanelStacking::floating);
    panel->setLevel(owner.level());
    panel->setShadow(shadow(container->devicePixelRatioF()));
    setCorners();
}

void WidgetWindowHost::setGeometry(const QRect& geometry) {
    container->setFixedSize(geometry.size());
    container->move(geometry.topLeft());
}

void WidgetWindowHost::setTitle(const std::string& title) {
    container->setWindowTitle(QString::fromStdString(title));
}

void WidgetWindowHost::setLevel(int level) {
    if (panel)
        panel->setLevel(level);
}

void WidgetWindowHost::show() {
    createPanel();
    if (isVisible() && !container->isMinimized()) {
        container->raise();
        return;
    }
    if (panel) {
        announceShown = true;
        panel->willShow();
    }
    if (isTitled(owner))
        container->showNormal();
    else
        container->show();
}

void WidgetWindowHost::mapped() {
    if (!panel || !std::exchange(announceShown, false))
        return;
    panel->didShow();
    if (std::exchange(focusWanted, false))
        panel->takeFocus();
}

void WidgetWindowHost::hide() {
    if (!isVisible())
        return;
    if (panel) {
        panel->returnFocus();
        panel->willHide();
    }
    announceShown = focusWanted = false;
    container->hide();
    if (panel)
        panel->didHide();
}

void WidgetWindowHost::takeFocus() {
    if (!panel) {
        container->raise();
        container->activateWindow();
        return;
    }
    focusWanted = announceShown;
    if (!focusWanted)
        panel->takeFocus();
}

QRect WidgetWindowHost::geometry() const {
    return container->geometry();
}

bool WidgetWindowHost::isVisible() const {
    return container->isVisible();
}

void WidgetWindowHost::setCorners() {
    if (!panel || !owner.contentView())
        return;
    const double scale = container->devicePixelRatioF();
    panel->setCorners({static_cast<int>(std::lround(container->width() * scale)),
                       static_cast<int>(std::lround(container->height() * scale))},
                      owner.contentView()->layer().cornerRadius * scale);
}

} // namespace mirrolet::platform
