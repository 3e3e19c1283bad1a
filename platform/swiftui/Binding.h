#pragma once

#include "platform/combine/AnyCancellable.h"

#include <functional>
#include <utility>

namespace mirrolet::platform::swiftui {

/// A function that starts an observation. It takes a closure and calls the closure after each change. It
/// returns an object that ends the observation when cancelled.
using Observation = std::function<AnyCancellable(std::function<void()>)>;

/// A two-way connection to a value that somebody else owns. Main thread only.
template <class Value> class Binding {
  public:
    Binding(std::function<Value()> get, std::function<void(Value)> set, Observation observe)
        : getter(std::move(get)), setter(std::move(set)), observation(std::move(observe)) {}

    [[nodiscard]] Value get() const { return getter(); }
    void set(Value value) const { setter(std::move(value)); }
    [[nodiscard]] const Observation& changes() const { return observation; }

  private:
    std::function<Value()> getter;
    std::function<void(Value)> setter;
    Observation observation;
};

} // namespace mirrolet::platform::swiftui
