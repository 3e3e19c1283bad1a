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
        // The task is destroyed after the mutex is unlocked, because its destructor may run any code, even
        // code that locks the mutex.
        Task dropped;
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
    // Returns the type of the event. The mutex is locked only for the thread sanitizer, which does not see
    // Qt's own lock. The sanitizer would report a data race with the thread that made the event.
    QEvent::Type typeOf(const QEvent& event) {
        const MutexLock lock(taskMutex);
        return event.type();
    }

    // Returns an event that wakes the main thread, or nullptr if such an event is already on its way.
    std::unique_ptr<QEvent> wakingEvent() MIRROLET_REQUIRES(taskMutex) {
        return std::exchange(awake, true) ? nullptr : std::make_unique<QEvent>(QEvent::User);
    }

    // Sends the event with the mutex unlocked, because the main thread often runs at once and would wait for
    // the mutex.
    void send(std::unique_ptr<QEvent> event) MIRROLET_EXCLUDES(taskMutex) {
        if (event)
            QCoreApplication::postEvent(this, event.release());
    }

    // Sets the timer to the first deadline. Only the main thread may use the timer, so on another thread this
    // function adds a task that sets the timer. The returned event wakes the main thread. The caller sends it
    // after unlocking the mutex. Returns nullptr on the main thread, or if such an event is already on its
    // way.
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
        // A wait that is too long for the Qt timer is shortened. At the end of the shortened wait no task is
        // due yet, so runDue() only sets the timer again.
        const auto bounded = std::clamp<std::int64_t>(wait, 0, std::numeric_limits<int>::max());
        timer.start(static_cast<int>(bounded));
    }

    // Runs the posted tasks. Tasks that are posted during this call run on the next turn.
    void runPosted() {
        MutexLock lock(taskMutex);
        awake = false;
        const auto count = tasks.postedCount();
        // A task may open a nested event loop. The event that is sent here makes that loop run the tasks that
        // are still waiting.
        if (count > 1) {
            auto event = wakingEvent();
            lock.unlock();
            send(std::move(event));
            lock.lock();
        }
        for (std::size_t done = 0; done < count; ++done) {
            auto task = tasks.takePosted();
            // No task is left if an earlier task opened a nested event loop, because that loop has run the
            // others.
            if (!task)
                return;
            lock.unlock();
            // The task is run and destroyed while the mutex is unlocked, because the task may post other
            // tasks, which locks the mutex.
            std::exchange(task, nullptr)();
            lock.lock();
        }
    }

    void runDue() {
        MutexLock lock(taskMutex);
        const auto now = Clock::now();
        while (auto task = tasks.takeDue(now)) {
            // The task may open a nested event loop, which needs the timer for the next deadline.
            arm();
            lock.unlock();
            // The task is run and destroyed while the mutex is unlocked, because the task may post other
            // tasks, which locks the mutex.
            std::exchange(task, nullptr)();
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
