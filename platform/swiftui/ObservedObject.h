#pragma once

#include "platform/combine/ObservableObjectPublisher.h"
#include "platform/dispatch/DispatchQueue.h"
#include "platform/swiftui/Binding.h"

#include <functional>

namespace mirrolet::platform::swiftui {

/// Refers to an observable object, which must outlive every view. The object announces a change before making
/// the change, so views read the changed object on a later turn of the main loop.
template <class Object> class ObservedObject {
  public:
    explicit ObservedObject(Object& observed) : object(&observed) {}

    Object* operator->() const { return object; }

    [[nodiscard]] Observation changes() const {
        return [observed = object](std::function<void()> changed) {
            return observed->objectWillChange.sinkOn(DispatchQueue::main(), std::move(changed));
        };
    }
    template <class Value, class Get, class Set>
    [[nodiscard]] Binding<Value> binding(Get getter, Set setter) const {
        return {
            [observed = object, getter] { return std::invoke(getter, *observed); },
            [observed = object, setter](Value value) { std::invoke(setter, *observed, std::move(value)); },
            changes()};
    }

  private:
    Object* object;
};

} // namespace mirrolet::platform::swiftui
