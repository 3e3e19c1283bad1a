#include "platform/dispatch/MainExecutor.h"

#include "platform/dispatch/TaskList.h"

#include <QCoreApplication>
#include <QEvent>
#include <QObject>
#include <QThread>
#include <QTimer>

#include <algorithm>
#include <limits>
#include <memory>
#include <mutex>
#include <utility>

namespace mirrolet::platform::dispatch {

class MainExecutor::Receiver final : public QObject {
  public:
    Receiver() : timer(this) {
        timer.setSingleShot(true);
        timer.setTimerType(Qt::PreciseTimer);
        connect(&timer, &QTimer::timeout, this, [this] { runDue(); });
        if (const auto* application = QCoreApplication::instance())
            moveToThread(application->thread());
    }

    void post(Task task) {
        std::unique_lock lock(taskMutex);
        tasks.push(std::move(task));
        wake(lock);
    }

    TimerNumber callAt(TimePoint deadline, Task task) {
        std::unique_lock lock(taskMutex);
        const auto number = tasks.pushAt(deadline, std::move(task));
        if (tasks.firstDeadline() == deadline)
            armFromAnyThread(lock);
        return number;
    }

    void cancel(TimerNumber number) {
        Task dropped; // Released after the lock, because a task's destructor may run any code.
        std::unique_lock lock(taskMutex);
        dropped = tasks.takeOut(number);
        armFromAnyThread(lock);
    }

  protected:
    bool event(QEvent* event) override {
        if (typeOf(*event) != QEvent::User)
            return QObject::event(event);
        runPosted();
        return true;
    }

  private:
    // Locks as wake() does when it makes the event, because the thread sanitizer cannot see the lock with
    // which Qt hands the event over.
    QEvent::Type typeOf(const QEvent& event) {
        const std::lock_guard lock(taskMutex);
        return event.type();
    }

    // Unlocks before the event is posted, because the main thread often runs at once and would wait for the
    // lock.
    void wake(std::unique_lock<std::mutex>& lock) {
        auto event = awake ? nullptr : std::make_unique<QEvent>(QEvent::User);
        awake = true;
        lock.unlock();
        if (event)
            QCoreApplication::postEvent(this, event.release());
    }

    void armFromAnyThread(std::unique_lock<std::mutex>& lock) {
        if (QThread::currentThread() == thread()) {
            arm();
            return;
        }
        tasks.push([this] {
            const std::lock_guard again(taskMutex);
            arm();
        });
        wake(lock);
    }

    void arm() {
        const auto deadline = tasks.firstDeadline();
        if (!deadline) {
            timer.stop();
            return;
        }
        const auto wait = std::chrono::ceil<std::chrono::milliseconds>(*deadline - Clock::now()).count();
        // A wait beyond the range of the Qt timer ends early, finds no task due and is followed by another.
        const auto bounded = std::clamp<std::int64_t>(wait, 0, std::numeric_limits<int>::max());
        timer.start(static_cast<int>(bounded));
    }

    // Tasks that are posted during this call run on the next turn.
    void runPosted() {
        std::unique_lock lock(taskMutex);
        awake = false;
        const auto count = tasks.postedCount();
        // A task may open an event loop, which needs an event to run the tasks behind that task.
        if (count > 1) {
            wake(lock);
            lock.lock();
        }
        for (std::size_t done = 0; done < count; ++done) {
            auto task = tasks.takePosted();
            if (!task)
                return; // An event loop inside a task has run the others.
            runUnlocked(lock, std::move(task));
        }
    }

    void runDue() {
        std::unique_lock lock(taskMutex);
        const auto now = Clock::now();
        while (auto task = tasks.takeDue(now)) {
            arm(); // For an event loop that the task may open.
            runUnlocked(lock, std::move(task));
        }
        arm();
    }

    static void runUnlocked(std::unique_lock<std::mutex>& lock, Task task) {
        lock.unlock();
        task();
        task = nullptr;
        lock.lock();
    }

    std::mutex taskMutex;
    TaskList tasks;
    bool awake = false;
    QTimer timer;
};

MainExecutor::MainExecutor() : receiver(std::make_unique<Receiver>()) {}
MainExecutor::~MainExecutor() = default;

void MainExecutor::post(Task task) {
    receiver->post(std::move(task));
}

Executor::TimerNumber MainExecutor::callAt(TimePoint deadline, Task task) {
    return receiver->callAt(deadline, std::move(task));
}

void MainExecutor::cancel(TimerNumber number) {
    receiver->cancel(number);
}

} // namespace mirrolet::platform::dispatch
