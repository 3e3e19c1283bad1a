#include "platform/appkit/ScreenWatch.h"

#include <QGuiApplication>
#include <QScreen>
#include <QTimer>

#include <utility>

namespace mirrolet::platform {

ScreenWatch::ScreenWatch(std::function<void()> told) : changed(std::move(told)) {
    for (QScreen* screen : QGuiApplication::screens())
        watch(*screen);
    const auto later = [this] { schedule(); };
    QObject::connect(qGuiApp, &QGuiApplication::screenAdded, &connections, [this](QScreen* screen) {
        watch(*screen);
        schedule();
    });
    QObject::connect(qGuiApp, &QGuiApplication::screenRemoved, &connections, later);
    QObject::connect(qGuiApp, &QGuiApplication::primaryScreenChanged, &connections, later);
}

void ScreenWatch::watch(QScreen& screen) {
    QObject::connect(&screen, &QScreen::geometryChanged, &connections, [this] { schedule(); });
}

void ScreenWatch::schedule() {
    if (std::exchange(scheduled, true))
        return;
    QTimer::singleShot(0, &connections, [this] {
        scheduled = false;
        changed();
    });
}

} // namespace mirrolet::platform
