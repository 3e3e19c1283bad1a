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

/// The member may be used only while the mutex is locked.
#define MIRROLET_GUARDED_BY(mutex) MIRROLET_THREAD_ATTRIBUTE(guarded_by(mutex))
/// The callers of the function have locked the mutex.
#define MIRROLET_REQUIRES(...) MIRROLET_THREAD_ATTRIBUTE(requires_capability(__VA_ARGS__))
/// The callers of the function have not locked the mutex, because the function or what it calls locks it.
#define MIRROLET_EXCLUDES(...) MIRROLET_THREAD_ATTRIBUTE(locks_excluded(__VA_ARGS__))
/// The order in which two mutexes are locked, written at one of them.
#define MIRROLET_ACQUIRED_BEFORE(...) MIRROLET_THREAD_ATTRIBUTE(acquired_before(__VA_ARGS__))
#define MIRROLET_ACQUIRED_AFTER(...) MIRROLET_THREAD_ATTRIBUTE(acquired_after(__VA_ARGS__))

/// The function uses guarded members without their mutex. A comment there says why no other thread can.
#define MIRROLET_UNCHECKED MIRROLET_THREAD_ATTRIBUTE(no_thread_safety_analysis)

namespace mirrolet::platform {

/// A mutex of the standard library that Clang's check knows.
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

/// Keeps a mutex locked for a scope. The scope may unlock the mutex and lock it again.
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

    /// Waits until `isTrue` returns true, and returns false if that takes longer than `atMost`. The check is
    /// off inside this function, because the check cannot see that the wait unlocks the mutex and locks it
    /// again.
    template <class Duration, class Predicate>
    bool waitFor(Mutex& mutex, Duration atMost, Predicate isTrue)
        MIRROLET_REQUIRES(mutex) MIRROLET_UNCHECKED {
        std::unique_lock guard(mutex.mutex, std::adopt_lock);
        const bool became = changed.wait_for(guard, atMost, isTrue);
        guard.release(); // The caller unlocks the mutex.
        return became;
    }

  private:
    std::condition_variable changed;
};

} // namespace mirrolet::platform
