#include "platform/dispatch/fake/VirtualTime.h"

#include "platform/foundation/Mutex.h"

#include <algorithm>
#include <utility>

namespace mirrolet::platform::dispatch {

/// Holds the waiting tasks of all queues, sorted by deadline. Tasks with equal deadlines stay in the order of
/// the posts.
struct VirtualTime::Agenda {
    struct Entry {
        int lane = 0;
        Task task;
    };
    using Place = std::pair<Executor::TimePoint, Executor::TimerNumber>;

    /// All tasks run on the test's thread. The mutex is needed because the session bus posts tasks from its
    /// own thread.
    Mutex agendaMutex;
    Executor::TimePoint now MIRROLET_GUARDED_BY(agendaMutex){std::chrono::hours(1)};
    std::map<Place, Entry> entries MIRROLET_GUARDED_BY(agendaMutex);
    Executor::TimerNumber lastNumber MIRROLET_GUARDED_BY(agendaMutex) = 0;
    std::vector<std::string> laneNames;
    std::string running;

    Executor::TimePoint time() {
        const MutexLock lock(agendaMutex);
        return now;
    }

    Executor::TimerNumber add(int lane, Executor::TimePoint deadline, Task task) {
        const MutexLock lock(agendaMutex);
        entries.emplace(Place{std::max(deadline, now), ++lastNumber}, Entry{lane, std::move(task)});
        return lastNumber;
    }

    template <class Condition> void drop(const Condition& condition) {
        // The tasks are destroyed after the mutex is unlocked, because a task's destructor may add or drop
        // tasks, which locks the mutex.
        std::vector<Task> dropped;
        const MutexLock lock(agendaMutex);
        for (auto entry = entries.begin(); entry != entries.end();) {
            if (!condition(entry->first, entry->second)) {
                ++entry;
                continue;
            }
            dropped.push_back(std::move(entry->second.task));
            entry = entries.erase(entry);
        }
    }

    std::map<Place, Entry>::node_type takeNext(Executor::TimePoint until) {
        const MutexLock lock(agendaMutex);
        if (entries.empty() || entries.begin()->first.first > until) {
            now = std::max(now, until);
            return {};
        }
        now = entries.begin()->first.first;
        return entries.extract(entries.begin());
    }

    bool runNext(Executor::TimePoint until) {
        auto node = takeNext(until);
        if (!node)
            return false;
        const auto outer = std::exchange(running, laneNames[static_cast<std::size_t>(node.mapped().lane)]);
        node.mapped().task();
        node.mapped().task = nullptr;
        running = outer;
        return true;
    }
};

class VirtualTime::Lane final : public Executor {
  public:
    Lane(std::shared_ptr<Agenda> agenda, const std::string& label)
        : agenda(std::move(agenda)), number(static_cast<int>(this->agenda->laneNames.size())) {
        this->agenda->laneNames.push_back(label);
    }

    void post(Task task) override { callAt(TimePoint::min(), std::move(task)); }
    [[nodiscard]] TimePoint now() const override { return agenda->time(); }
    TimerNumber callAt(TimePoint deadline, Task task) override {
        return stopped ? 0 : agenda->add(number, deadline, std::move(task));
    }
    void cancel(TimerNumber cancelled) override {
        agenda->drop([cancelled](const auto& place, const auto&) { return place.second == cancelled; });
    }
    void shutDown() override {
        stopped = true;
        agenda->drop([this](const auto&, const auto& entry) { return entry.lane == number; });
    }

  private:
    std::shared_ptr<Agenda> agenda;
    int number;
    bool stopped = false;
};

VirtualTime::VirtualTime()
    : agenda(std::make_shared<Agenda>()), mainLane(std::make_shared<Lane>(agenda, "main")) {
    setCurrent(this);
}

VirtualTime::~VirtualTime() {
    agenda->drop([](const auto&, const auto&) { return true; });
    setCurrent(nullptr);
}

void VirtualTime::advance(double seconds) {
    const auto until = agenda->time() + spanOf(seconds);
    while (agenda->runNext(until)) {
    }
}

const std::string& VirtualTime::runningQueue() const {
    return agenda->running;
}

int VirtualTime::queuesMade(const std::string& label) const {
    const auto found = made.find(label);
    return found == made.end() ? 0 : found->second;
}

std::shared_ptr<Executor> VirtualTime::makeSerial(const std::string& label, DispatchQoS) {
    ++made[label];
    return std::make_shared<Lane>(agenda, label);
}

std::shared_ptr<Executor> VirtualTime::main() {
    return mainLane;
}

} // namespace mirrolet::platform::dispatch
