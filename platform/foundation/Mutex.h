#pragma once

#include <condition_variable>
#include <mutex>

// Clang checks at compile time that a guarded member is used only with its mutex locked (-Wthread-safety).
// Other compilers ignore the attributes. The standard library's mutexes carry no such attributes, so the
// classes below add them.
#if defined(__clang__)
#define MIRROLET_THREAD_ATTRIBUTE(attribute) __attribute__((attribute))
#else
#define MIRROLET_THREAD_ATTRIBUTE(attribute)
#endif

/// Marks a member that may be used only while the mutex is locked.
#define MIRROLET_GUARDED_BY(mutex) MIRROLET_THREAD_ATTRIBUTE(guarded_by(mutex))
/// Marks a function whose callers must have locked these mutexes.
#define MIRROLET_REQUIRES(...) MIRROLET_THREAD_ATTRIBUTE(requires_capability(__VA_ARGS__))
/// Marks a function whose callers must not have locked these mutexes, because the function locks them.
#define MIRROLET_EXCLUDES(...) MIRROLET_THREAD_ATTRIBUTE(locks_excluded(__VA_ARGS__))
/// Marks a mutex that a thread has to lock before the other mutex, if the thread locks both.
#define MIRROLET_ACQUIRED_BEFORE(...) MIRROLET_THREAD_ATTRIBUTE(acquired_before(__VA_ARGS__))
#define MIRROLET_ACQUIRED_AFTER(...) MIRROLET_THREAD_ATTRIBUTE(acquired_after(__VA_ARGS__))

/// Marks a function that uses guarded members without their mutex. A comment at the function says why that is
/// safe.
#define MIRROLET_UNCHECKED MIRROLET_THREAD_ATTRIBUTE(no_thread_safety_analysis)

namespace mirrolet::platform {

/// A mutex of the standard library with the attributes that Clang checks.
template <class StandardMutex> class MIRROLET_THREAD_ATTRIBUTE(capability("mutex")) CheckedMutex {
  public:
    void lock() MIRROLET_THREAD_ATTRIBUTE(acquire_capability()) { mutex.lock(); }
    void unlock() MIRROLET_THREAD_ATTRIBUTE(release_capability()) { mutex.unlock(); }
    bool try_lock() MIRROLET_THREAD_ATTRIBUTE(try_acquire_capability(true)) { return mutex.try_lock(); }

  private:
    friend class ConditionVariable;
    StandardMutex mutex;
};

using Mutex = CheckedMutex<std::mutex>;
using RecursiveMutex = CheckedMutex<std::recursive_mutex>;

/// Keeps a mutex locked until the end of a scope. The mutex can be unlocked and locked again meanwhile.
template <class AnyMutex> class MIRROLET_THREAD_ATTRIBUTE(scoped_lockable) MutexLock {
  public:
    explicit MutexLock(AnyMutex& mutex) MIRROLET_THREAD_ATTRIBUTE(acquire_capability(mutex)) : guard(mutex) {}
    /// Takes over a mutex that try_lock() has locked.
    MutexLock(AnyMutex& mutex, std::adopt_lock_t adopt) MIRROLET_REQUIRES(mutex) : guard(mutex, adopt) {}
    ~MutexLock() MIRROLET_THREAD_ATTRIBUTE(release_capability()) = default;
    MutexLock(const MutexLock&) = delete;
    MutexLock& operator=(const MutexLock&) = delete;

    void unlock() MIRROLET_THREAD_ATTRIBUTE(release_capability()) { guard.unlock(); }
    void lock() MIRROLET_THREAD_ATTRIBUTE(acquire_capability()) { guard.lock(); }

  private:
    std::unique_lock<AnyMutex> guard;
};

/// A condition variable for a Mutex.
class ConditionVariable {
  public:
    void notifyAll() { changed.notify_all(); }

    /// Waits until `isTrue` returns true, or until `atMost` has passed. Returns the last result of `isTrue`.
    /// Clang's check is off inside this function, because the check does not see that waiting unlocks the
    /// mutex and locks it again.
    template <class Duration, class Predicate>
    bool waitFor(Mutex& mutex, Duration atMost, Predicate isTrue)
        MIRROLET_REQUIRES(mutex) MIRROLET_UNCHECKED {
        std::unique_lock guard(mutex.mutex, std::adopt_lock);
        const bool became = changed.wait_for(guard, atMost, isTrue);
        // release() leaves the mutex locked, because the caller unlocks the mutex.
        guard.release();
        return became;
    }

  private:
    std::condition_variable changed;
};

} // namespace mirrolet::platform
