#pragma once

#include <functional>
#include <utility>

namespace mirrolet::platform {

/// Owns a subscription. The subscription is cancelled when this object is destroyed or replaced. Can be moved
/// but not copied.
class AnyCancellable {
  public:
    AnyCancellable() = default;
    explicit AnyCancellable(std::function<void()> cancelAction) : action(std::move(cancelAction)) {}
    AnyCancellable(AnyCancellable&& other) noexcept : action(std::exchange(other.action, nullptr)) {}
    AnyCancellable& operator=(AnyCancellable&& other) noexcept {
        if (this != &other) {
            cancel();
            action = std::exchange(other.action, nullptr);
        }
        return *this;
    }
    AnyCancellable(const AnyCancellable&) = delete;
    AnyCancellable& operator=(const AnyCancellable&) = delete;
    ~AnyCancellable() { cancel(); }

    void cancel() {
        if (auto once = std::exchange(action, nullptr))
            once();
    }

  private:
    std::function<void()> action;
};

} // namespace mirrolet::platform
