#include "platform/combine/ObservableObjectPublisher.h"

#include "platform/dispatch/DispatchQueue.h"

#include <cstdint>
#include <utility>
#include <vector>

namespace mirrolet::platform {

struct ObservableObjectPublisher::State {
    using Receiver = std::shared_ptr<const std::function<void()>>;

    /// The key is a number that grows with each subscription, so subscribers are called in the order of
    /// subscription.
    std::map<std::uint64_t, Receiver> subscribers;
    std::uint64_t lastNumber = 0;
};

ObservableObjectPublisher::ObservableObjectPublisher() : state(std::make_shared<State>()) {}

void ObservableObjectPublisher::send() {
    // While send() runs, a subscriber may cancel subscriptions, add new ones or destroy this publisher. So
    // the state is kept alive, and each subscriber is looked up by number before the call.
    const auto kept = state;
    std::vector<std::uint64_t> numbers;
    for (const auto& [number, receiver] : kept->subscribers)
        numbers.push_back(number);
    for (const auto number : numbers) {
        const auto found = kept->subscribers.find(number);
        if (found == kept->subscribers.end())
            continue;
        const auto receiver = found->second;
        (*receiver)();
    }
}

AnyCancellable ObservableObjectPublisher::sink(std::function<void()> receive) {
    const auto number = ++state->lastNumber;
    state->subscribers.emplace(number, std::make_shared<const std::function<void()>>(std::move(receive)));
    return AnyCancellable([weakState = std::weak_ptr(state), number] {
        if (const auto alive = weakState.lock())
            alive->subscribers.erase(number);
    });
}

AnyCancellable ObservableObjectPublisher::sinkOn(DispatchQueue& queue, std::function<void()> receive) {
    // The posted task holds the function only weakly, so the task does nothing if the subscription was
    // cancelled meanwhile.
    auto shared = std::make_shared<const std::function<void()>>(std::move(receive));
    std::weak_ptr<const std::function<void()>> weak = shared;
    return sink([&queue, shared = std::move(shared), weak = std::move(weak)] {
        queue.async([weak] {
            if (const auto alive = weak.lock())
                (*alive)();
        });
    });
}

} // namespace mirrolet::platform
