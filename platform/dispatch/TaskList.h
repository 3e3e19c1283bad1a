#pragma once

#include "platform/dispatch/Executor.h"

#include <algorithm>
#include <deque>
#include <optional>
#include <utility>
#include <vector>

namespace mirrolet::platform::dispatch {

/// The tasks that an executor still has to run. The owner locks a mutex for each call.
class TaskList {
  public:
    void push(Task task) { posted.push_back(std::move(task)); }

    Executor::TimerNumber pushAt(Executor::TimePoint deadline, Task task) {
        timed.push_back({deadline, ++lastNumber, std::move(task)});
        return lastNumber;
    }

    /// Removes and returns the timed task with this number, or returns nullptr if there is none. The caller
    /// destroys the task after unlocking the mutex, because a task's destructor may run any code, even code
    /// that locks the mutex.
    Task takeOut(Executor::TimerNumber number) {
        return take(std::find_if(timed.begin(), timed.end(),
                                 [number](const Timed& one) { return one.number == number; }));
    }

    /// Removes and returns the timed task with the earliest deadline. Returns nullptr if no deadline has
    /// passed.
    Task takeDue(Executor::TimePoint now) {
        const auto next = first();
        return next != timed.end() && next->deadline <= now ? take(next) : nullptr;
    }

    /// Removes and returns the task that was posted first, or returns nullptr if there is none.
    Task takePosted() {
        if (posted.empty())
            return nullptr;
        auto task = std::move(posted.front());
        posted.pop_front();
        return task;
    }

    [[nodiscard]] std::size_t postedCount() const { return posted.size(); }
    [[nodiscard]] std::optional<Executor::TimePoint> firstDeadline() {
        const auto next = first();
        return next == timed.end() ? std::nullopt : std::optional(next->deadline);
    }

  private:
    struct Timed {
        Executor::TimePoint deadline;
        Executor::TimerNumber number;
        Task task;
    };
    using Place = std::vector<Timed>::iterator;

    /// Returns the timed task with the earliest deadline. If several tasks have this deadline, returns the
    /// task that was pushed first.
    Place first() {
        return std::min_element(timed.begin(), timed.end(), [](const Timed& one, const Timed& other) {
            return std::pair(one.deadline, one.number) < std::pair(other.deadline, other.number);
        });
    }

    Task take(Place place) {
        if (place == timed.end())
            return nullptr;
        auto task = std::move(place->task);
        timed.erase(place);
        return task;
    }

    std::deque<Task> posted;
    std::vector<Timed> timed; ///< Unsorted, because a queue has only one or two timed tasks.
    Executor::TimerNumber lastNumber = 0;
};

} // namespace mirrolet::platform::dispatch
