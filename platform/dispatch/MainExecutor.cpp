#include "platform/dispatch/MainExecutor.h"

#include "platform/dispatch/TaskList.h"
#include "platform/foundation/Mutex.h"

#include <QCoreApplication>
#include <QEvent>
#include <QObject>
#include <QThread>
#include <QTimer>

#include <algorithm>
#include <limits>
#include <memory>
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
        MutexLock lock(taskMutex);
        tasks.push(std::move(task));
        auto event = wakingEvent();
        lock.unlock();
        send(std::move(event));
    }

    TimerNumber callAt(TimePoint deadline, Task task) {
        MutexLock lock(taskMutex);
        const auto number = tasks.pushAt(deadline, std::move(task));
        auto event = tasks.firstDeadline() == deadline ? armFromAnyThread() : nullptr;
        lock.unlock();
        send(std::move(event));
        return number;
    }

    void cancel(TimerNumber number) {
        Task dropped; // Released after the lock, because a task's destructor may run any code.
        MutexLock lock(taskMutex);
        dropped = tasks.takeOut(number);
        auto event = armFromAnyThread();
        lock.unlock();
        send(std::move(event));
    }

  protected:
    bool event(QEvent* event) override {
        if (typeOf(*event) != QEvent::User)
            return QObject::event(event);
        runPosted();
        return true;
    }

  private:
    // Returns the type of the event. Locks as wakingEvent() does when it makes the event, because the thread
    // sanitizer cannot see the lock with which Qt hands the event over.
    QEvent::Type typeOf(const QEvent& event) {
        const MutexLock lock(taskMutex);
        return event.type();
    }

    // Returns an event that wakes the main thread; nullptr if one is already on its way.
    std::unique_ptr<QEvent> wakingEvent() MIRROLET_REQUIRES(taskMutex) {
        return std::exchange(awake, true) ? nullptr : std::make_unique<QEvent>(QEvent::User);
    }

    // Sends the event with the mutex unlocked, because the main thread often runs at once and would wait for
    // the mutex.
    void send(std::unique_ptr<QEvent> event) MIRROLET_EXCLUDES(taskMutex) {
        if (event)
            QCoreApplication::postEvent(this, event.release());
    }

    // Arms the timer if this is the main thread, and otherwise posts a task that does so. Returns the event
    // that has to be sent for that task, or nullptr.
    std::unique_ptr<QEvent> armFromAnyThread() MIRROLET_REQUIRES(taskMutex) {
        if (QThread::currentThread() == thread()) {
            arm();
            return nullptr;
        }
        tasks.push([this] {
            const MutexLock again(taskMutex);
            arm();
        });
        return wakingEvent();
    }

    void arm() MIRROLET_REQUIRES(taskMutex) {
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

    // Runs the posted tasks. Tasks that are posted during this call run on the next turn.
    void runPosted() {
        MutexLock lock(taskMutex);
        awake = false;
        const auto count = tasks.postedCount();
        // A task may open an event loop, which needs an event to run the tasks behind that task.
        if (count > 1) {
            auto event = wakingEvent();
            lock.unlock();
            send(std::move(event));
            lock.lock();
        }
        for (std::size_t done = 0; done < count; ++done) {
            auto task = tasks.takePosted();
            if (!task)
                return; // An event loop inside a task has run the others.
            lock.unlock();
            std::exchange(task, nullptr)(); // Runs the task and releases it, together with what it owns.
            lock.lock();
        }
    }

    void runDue() {
        MutexLock lock(taskMutex);
        const auto now = Clock::now();
        while (auto task = tasks.takeDue(now)) {
            arm(); // For an event loop that the task may open.
            lock.unlock();
            std::exchange(task, nullptr)(); // Runs the task and releases it, together with what it owns.
            lock.lock();
        }
        arm();
    }

    Mutex taskMutex;
    TaskList tasks MIRROLET_GUARDED_BY(taskMutex);
    bool awake MIRROLET_GUARDED_BY(taskMutex) = false;
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
