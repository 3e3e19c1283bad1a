#pragma once

#include "platform/dispatch/Executor.h"

#include <deque>
#include <map>
#include <optional>
#include <utility>

namespace mirrolet::platform::dispatch {

/// The tasks that an executor still has to run. Holds no lock: its owner does.
class TaskList {
  public:
    void push(Task task) { posted.push_back(std::move(task)); }

    Executor::TimerNumber pushAt(Executor::TimePoint deadline, Task task) {
        const auto number = ++lastNumber;
        deadlines.emplace(number, deadline);
        timed.emplace(Place{deadline, number}, std::move(task));
        return number;
    }

    /// Takes a timed task out. The caller lets it go without the lock: releasing it may run anything.
    Task takeOut(Executor::TimerNumber number) {
        const auto found = deadlines.find(number);
        if (found == deadlines.end())
            return nullptr;
        auto node = timed.extract(Place{found->second, number});
        deadlines.erase(found);
        return std::move(node.mapped());
    }

    /// The next task to run: a timed one that is due, else the one posted first. Due ones go first, but each
    /// only once for a deadline, so that posted tasks are not starved. nullptr if there is none yet.
    Task takeNext(Executor::TimePoint now) {
        if (auto due = takeDue(now))
            return due;
        return takePosted();
    }

    Task takeDue(Executor::TimePoint now) {
        if (timed.empty() || timed.begin()->first.first > now)
            return nullptr;
        return takeOut(timed.begin()->first.second);
    }

    Task takePosted() {
        if (posted.empty())
            return nullptr;
        auto task = std::move(posted.front());
        posted.pop_front();
        return task;
    }

    [[nodiscard]] std::size_t postedCount() const { return posted.size(); }
    [[nodiscard]] std::optional<Executor::TimePoint> firstDeadline() const {
        return timed.empty() ? std::nullopt : std::optional(timed.begin()->first.first);
    }

  private:
    using Place = std::pair<Executor::TimePoint, Executor::TimerNumber>;

    std::deque<Task> posted;
    std::map<Place, Task> timed;
    std::map<Executor::TimerNumber, Executor::TimePoint> deadlines;
    Executor::TimerNumber lastNumber = 0;
};

} // namespace mirrolet::platform::dispatch
