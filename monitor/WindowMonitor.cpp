#include "monitor/WindowMonitor.h"

#include "settings/SettingsStore.h"

#include <utility>

namespace mirrolet {

using platform::DispatchQueue;

namespace {
constexpr auto windowMonitorQueueLabel = "app.mirrolet.Mirrolet.windowMonitor";
}

std::shared_ptr<WindowMonitor> WindowMonitor::make() {
    return std::shared_ptr<WindowMonitor>(new WindowMonitor());
}

WindowMonitor::WindowMonitor() : queue(windowMonitorQueueLabel, platform::DispatchQoS::userInitiated) {}

void WindowMonitor::start() {
    if (monitoring)
        return;
    monitoring = true;
    timer = platform::DispatchSourceTimer::make(queue);
    timer->scheduleNow(SettingsStore::shared().currentMonitoringSettings().pollInterval);
    timer->setEventHandler([weak = weak_from_this()] {
        if (const auto self = weak.lock())
            self->poll();
    });
    timer->resume();
}

void WindowMonitor::stop() {
    if (!monitoring)
        return;
    monitoring = false;
    cancelTimer();
    if (!isCallActive.exchange(false))
        return;
    DispatchQueue::main().async([ended = onCallEnded] {
        if (ended)
            ended();
    });
}

void WindowMonitor::restartIfMonitoring() {
    if (!monitoring)
        return;
    cancelTimer();
    monitoring = false;
    start();
}

void WindowMonitor::cancelTimer() {
    if (timer)
        timer->cancel();
    timer = nullptr;
}

void WindowMonitor::poll() {
    const auto settings = SettingsStore::shared().currentMonitoringSettings();
    auto candidate = settings.scope == MonitoringScope::specificApps
                         ? candidateForSpecificApps(settings.selectedAppIdentifiers)
                         : candidateForAllWindows();
    // The owner is told only when a candidate appears or disappears. A candidate that differs from that of
    // the last poll counts as the same video call.
    if (isCallActive.exchange(candidate.has_value()) == candidate.has_value())
        return;
    if (candidate) {
        DispatchQueue::main().async([window = std::move(*candidate), detected = onCallDetected] {
            if (detected)
                detected(window);
        });
        return;
    }
    DispatchQueue::main().async([ended = onCallEnded] {
        if (ended)
            ended();
    });
}

} // namespace mirrolet
