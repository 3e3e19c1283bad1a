#include "platform/appkit/SingleInstance.h"

#include "platform/appkit/ApplicationService.h"
#include "platform/appkit/InstanceSocket.h"

#include <QSocketNotifier>

#include <optional>
#include <utility>

namespace mirrolet::platform {

struct SingleInstance::State {
    InstanceSocket socket;
    std::function<void()> activate;
    std::unique_ptr<QSocketNotifier> askers;
    std::optional<ApplicationService> service;

    void listen() {
        if (socket.listener() < 0)
            return;
        askers = std::make_unique<QSocketNotifier>(socket.listener(), QSocketNotifier::Read);
        QObject::connect(askers.get(), &QSocketNotifier::activated, askers.get(), [this] { serve(); });
    }

    void serve() {
        const auto asker = socket.accept();
        if (!asker)
            return;
        // The function is copied, because it may end this program and destroy this object.
        const auto running = activate;
        running();
        InstanceSocket::answer(asker);
    }
};

SingleInstance::SingleInstance() : state(std::make_shared<State>()) {}

SingleInstance::~SingleInstance() = default;

SingleInstance::Start SingleInstance::claim(const std::string& display, std::chrono::milliseconds patience) {
    return state->socket.claim(display, patience);
}

void SingleInstance::setOnActivate(std::function<void()> activate) {
    state->activate = std::move(activate);
    state->listen();
    state->service.emplace([weak = std::weak_ptr(state)] {
        if (const auto self = weak.lock())
            self->activate();
    });
}

} // namespace mirrolet::platform
