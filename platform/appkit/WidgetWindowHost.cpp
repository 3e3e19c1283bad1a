#include "platform/appkit/WidgetWindowHost.h"

#include "platform/appkit/Coordinates.h"
#include "platform/appkit/NSView.h"
#include "platform/appkit/NSWindowStyleMask.h"
#include "platform/desktop/Desktop.h"

#include <QEvent>
#include <QMoveEvent>
#include <QVBoxLayout>
#include <QWidget>
#include <QWindow>

namespace mirrolet::platform {

namespace {

desktop::PanelStacking focusedPanelStacking() {
    return desktop::Desktop::current().focusedPanelStacking();
}

Qt::WindowFlags containerFlags(unsigned styleMask) {
    if (!(styleMask & NSWindowStyleMask::titled)) {
        const Qt::WindowFlags panelFlags = Qt::Tool | Qt::FramelessWindowHint;
        return focusedPanelStacking() == desktop::PanelStacking::floating
                   ? panelFlags | Qt::BypassWindowManagerHint
                   : panelFlags;
    }
    Qt::WindowFlags flags =
        Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowSystemMenuHint;
    flags.setFlag(Qt::WindowCloseButtonHint, styleMask & NSWindowStyleMask::closable);
    flags.setFlag(Qt::WindowMinimizeButtonHint, styleMask & NSWindowStyleMask::miniaturizable);
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
        // This window must not delete the widget, because the hosting view owns it.
        hosted.setParent(nullptr);
    }

  protected:
    void moveEvent(QMoveEvent* /*event*/) override {
        // A window that is not a panel has a title bar, so the window manager may have moved it.
        if (!host.panel.isOpen())
            host.moved(geometry());
    }
    void resizeEvent(QResizeEvent* /*event*/) override { host.cutCorners(); }

    bool event(QEvent* event) override {
        const bool handled = QWidget::event(event);
        if (event->type() == QEvent::Paint)
            host.panel.shown();
        return handled;
    }

    /// Takes the focus at a click, because the window manager gives the focus only to windows that it
    /// manages, and it does not manage a panel.
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::MouseButtonPress)
            host.owner.makeKey();
        return QWidget::eventFilter(watched, event);
    }

  private:
    WidgetWindowHost& host;
    QWidget& hosted;
};

WidgetWindowHost::WidgetWindowHost(HostedWindow& window)
    : WindowHost(window), container(std::make_unique<Container>(*this, *window.contentView()->hostedWidget(),
                                                                containerFlags(window.look().styleMask))) {
    container->setWindowTitle(QString::fromStdString(window.title()));
    container->setFixedSize(toQtScreenRect(window.frame()).size());
    container->move(toQtScreenRect(window.frame()).topLeft());
    if (!isTitled()) {
        container->setAttribute(Qt::WA_TranslucentBackground, !window.look().isOpaque);
        container->setAttribute(Qt::WA_ShowWithoutActivating);
    }
}

WidgetWindowHost::~WidgetWindowHost() {
    panel.close();
}

bool WidgetWindowHost::isTitled() const {
    return owner.look().styleMask & NSWindowStyleMask::titled;
}

void WidgetWindowHost::makePanel() {
    if (panel.isOpen() || isTitled())
        return;
    const auto number = static_cast<desktop::WindowNumber>(container->winId());
    container->windowHandle()->installEventFilter(container.get());
    awaitQt();
    openPanel(number, focusedPanelStacking());
    cutCorners();
}

double WidgetWindowHost::scale() const {
    return container->devicePixelRatioF();
}

void WidgetWindowHost::setGeometry(const QRect& geometry) {
    container->setFixedSize(geometry.size());
    container->move(geometry.topLeft());
}

void WidgetWindowHost::setTitle(const std::string& title) {
    container->setWindowTitle(QString::fromStdString(title));
}

void WidgetWindowHost::setLevel(int level) {
    panel.setLevel(level);
}

void WidgetWindowHost::show() {
    makePanel();
    if (isVisible() && !container->isMinimized()) {
        container->raise();
        return;
    }
    panel.willShow();
    if (isTitled())
        container->showNormal();
    else
        container->show();
}

void WidgetWindowHost::hide() {
    if (!isVisible())
        return;
    panel.returnFocus();
    panel.willHide();
    container->hide();
    panel.didHide();
}

void WidgetWindowHost::takeFocus() {
    if (panel.isOpen()) {
        panel.takeFocus();
        return;
    }
    container->raise();
    container->activateWindow();
}

QRect WidgetWindowHost::geometry() const {
    return container->geometry();
}

bool WidgetWindowHost::isVisible() const {
    return container->isVisible();
}

} // namespace mirrolet::platform
