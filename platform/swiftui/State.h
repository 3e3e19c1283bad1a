#pragma once

#include "platform/combine/ObservableObjectPublisher.h"
#include "platform/swiftui/Binding.h"

#include <memory>
#include <utility>

namespace mirrolet::platform::swiftui {

/// A value that a view owns. Copies of the view share the value. The value exists as long as a copy exists,
/// or a widget that was built from a copy. Observers are called right after each change. Main thread only.
template <class Value> class State {
    struct Cell {
        Value value;
        ObservableObjectPublisher didChange;
    };

  public:
    /// Refers to the value without keeping the value alive. Used for results that may arrive after the view
    /// is gone.
    class Weak {
      public:
        explicit Weak(const std::shared_ptr<Cell>& cell) : cell(cell) {}
        /// Does nothing once the view is gone.
        void set(Value value) const {
            if (const auto alive = cell.lock())
                assign(*alive, std::move(value));
        }

      private:
        std::weak_ptr<Cell> cell;
    };

    explicit State(Value initial) : cell(std::make_shared<Cell>(Cell{std::move(initial), {}})) {}

    [[nodiscard]] const Value& get() const { return cell->value; }
    /// Sets the value. Setting an equal value does not call the observers.
    void set(Value value) const { assign(*cell, std::move(value)); }
    [[nodiscard]] Weak weak() const { return Weak(cell); }

    [[nodiscard]] Observation changes() const {
        return
            [cell = cell](std::function<void()> changed) { return cell->didChange.sink(std::move(changed)); };
    }
    [[nodiscard]] Binding<Value> binding() const {
        return {[cell = cell] { return cell->value; },
                [cell = cell](Value value) { assign(*cell, std::move(value)); }, changes()};
    }

  private:
    static void assign(Cell& cell, Value value) {
        if (cell.value == value)
            return;
        cell.value = std::move(value);
        // The copy is needed because an observer may destroy the view, and with the view the cell.
        auto publisher = cell.didChange;
        publisher.send();
    }

    std::shared_ptr<Cell> cell;
};

} // namespace mirrolet::platform::swiftui
