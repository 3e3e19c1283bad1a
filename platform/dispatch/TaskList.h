#pragma once

#include "platform/dispatch/Executor.h"

#include <algorithm>
#include <deque>
#include <optional>
#include <utility>
#include <vector>

namespace mirrolet::platform::dispatch {

/// The tasks that an executor still has to run. The owner locks the list for each call.
class TaskList {
  public:
    void push(Task task) { posted.push_back(std::move(task)); }

    Executor::TimerNumber pushAt(Executor::TimePoint deadline, Task task) {
        timed.push_back({deadline, ++lastNumber, std::move(task)});
        return lastNumber;
    }

    /// Takes a timed task out; nullptr if no task has this number. The caller releases the task after the
    /// lock, because a task's destructor may run any code.
    Task takeOut(Executor::TimerNumber number) {
        return take(std::find_if(timed.begin(), timed.end(),
                                 [number](const Timed& one) { return one.number == number; }));
    }

    /// Takes out the timed task that is due first; nullptr if none is due. A due task runs before the posted
    /// ones, but only once for a deadline, so that posted tasks are not starved.
    Task takeDue(Executor::TimePoint now) {
        const auto next = first();
        return next != timed.end() && next->deadline <= now ? take(next) : nullptr;
    }

    /// Takes out the task that was posted first; nullptr if there is none.
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

    /// Returns the timed task with the first deadline. If several have this deadline, returns the one that
    /// was pushed first.
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
    std::vector<Timed> timed; ///< Unsorted, because a queue has only one or two.
    Executor::TimerNumber lastNumber = 0;
};

} // namespace mirrolet::platform::dispatch
