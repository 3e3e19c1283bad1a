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

namespace {
constexpr std::size_t mostUnhurried = 15; ///< A second's worth, where a mirror posts them.
}

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
        std::unique_lock lock(mutex);
        tasks.push(std::move(task));
        wake(lock);
    }

    void postUnhurried(Task task) {
        std::unique_lock lock(mutex);
        tasks.push(std::move(task));
        if (tasks.postedCount() >= mostUnhurried)
            wake(lock);
    }

    TimerNumber callAt(TimePoint deadline, Task task) {
        std::unique_lock lock(mutex);
        const auto number = tasks.pushAt(deadline, std::move(task));
        if (tasks.firstDeadline() == deadline)
            armFromAnyThread(lock);
        return number;
    }

    void cancel(TimerNumber number) {
        Task dropped; // Released after the lock: it may hold the last reference of something.
        std::unique_lock lock(mutex);
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
    // Under the lock that it was made under: Qt's own is one that the thread sanitizer cannot see.
    QEvent::Type typeOf(const QEvent& event) {
        const std::lock_guard lock(mutex);
        return event.type();
    }

    // Lets go of the lock before it posts: the main thread often runs at once, and would wait for it.
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
            const std::lock_guard again(mutex);
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
        // A wait beyond the timer's range ends early, finds nothing due and waits again.
        const auto bounded = std::clamp<std::int64_t>(wait, 0, std::numeric_limits<int>::max());
        timer.start(static_cast<int>(bounded));
    }

    // Tasks that are posted meanwhile wait for the next turn.
    void runPosted() {
        std::unique_lock lock(mutex);
        awake = false;
        const auto count = tasks.postedCount();
        // If a task opens a loop of its own, that loop has to find an event for the tasks behind it.
        if (count > 1) {
            wake(lock);
            lock.lock();
        }
        for (std::size_t done = 0; done < count; ++done) {
            auto task = tasks.takePosted();
            if (!task)
                return; // A loop inside a task has run the others.
            runUnlocked(lock, std::move(task));
        }
    }

    void runDue() {
        std::unique_lock lock(mutex);
        const auto now = Clock::now();
        while (auto task = tasks.takeDue(now)) {
            arm(); // For a loop that the task may open.
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

    std::mutex mutex;
    TaskList tasks;
    bool awake = false;
    QTimer timer;
};

MainExecutor::MainExecutor() : receiver(std::make_unique<Receiver>()) {}
MainExecutor::~MainExecutor() = default;

void MainExecutor::post(Task task) {
    receiver->post(std::move(task));
}

void MainExecutor::postUnhurried(Task task) {
    receiver->postUnhurried(std::move(task));
}

Executor::TimerNumber MainExecutor::callAt(TimePoint deadline, Task task) {
    return receiver->callAt(deadline, std::move(task));
}

void MainExecutor::cancel(TimerNumber number) {
    receiver->cancel(number);
}

} // namespace mirrolet::platform::dispatch
