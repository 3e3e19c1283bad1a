#include "platform/foundation/UserDefaults.h"

#include "platform/dispatch/DispatchQueue.h"
#include "platform/dispatch/Executor.h"
#include "platform/foundation/ConfigFolder.h"
#include "platform/foundation/Mutex.h"
#include "platform/foundation/NSLog.h"
#include "platform/foundation/PropertyListFile.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <fcntl.h>
#include <utility>

namespace mirrolet::platform {

namespace {

constexpr double writeDelay = 0.3; // In seconds, counted from the last change.

std::string timeStamp() {
    const auto now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    char buffer[32];
    return {buffer, std::strftime(buffer, sizeof buffer, "%Y%m%d-%H%M%S", &local)};
}

/// Renames the file to an unused name and returns that name. Returns an empty string on failure.
std::string setAside(const std::string& path) {
    const auto stem = path + ".broken-" + timeStamp();
    for (int attempt = 1; attempt <= 100; ++attempt) {
        auto name = attempt == 1 ? stem : stem + "-" + std::to_string(attempt);
        if (renameat2(AT_FDCWD, path.c_str(), AT_FDCWD, name.c_str(), RENAME_NOREPLACE) == 0)
            return name;
        if (errno != EEXIST)
            break;
    }
    return {};
}

} // namespace

struct UserDefaults::State : std::enable_shared_from_this<State> {
    explicit State(std::string filePath) : path(std::move(filePath)) {}

    void load() {
        auto content = PropertyListFile::read(path);
        const MutexLock lock(valuesMutex);
        values = std::move(content.values);
        if (content.problem.empty())
            return;
        const auto name = setAside(path);
        writable = !name.empty();
        NSLog("UserDefaults: cannot read " + path + " (" + content.problem + "); " +
              (writable ? "it is now " + name : "it stays, and no change will be saved"));
    }

    void set(const std::string& key, PropertyList value) {
        const MutexLock lock(valuesMutex);
        auto& stored = values[key];
        if (!dirty && stored == value)
            return;
        stored = std::move(value);
        dirty = true;
        if (writable)
            scheduleWrite();
    }

    void write() {
        const MutexLock fileLock(fileMutex);
        PropertyList::Dictionary copy;
        {
            const MutexLock lock(valuesMutex);
            if (!dirty || !writable)
                return;
            copy = values;
            dirty = false;
        }
        report(PropertyListFile::write(path, copy));
    }

    Mutex valuesMutex;
    PropertyList::Dictionary values MIRROLET_GUARDED_BY(valuesMutex);
    /// The first change makes the queue, because a program that only reads needs no thread.
    std::unique_ptr<DispatchQueue> queue MIRROLET_GUARDED_BY(valuesMutex);

  private:
    void scheduleWrite() MIRROLET_REQUIRES(valuesMutex) {
        if (!queue)
            queue = std::make_unique<DispatchQueue>("app.mirrolet.Mirrolet.userDefaults");
        auto& executor = *queue->executor();
        executor.cancel(pendingWrite);
        pendingWrite =
            executor.callAt(executor.now() + dispatch::spanOf(writeDelay), [weak = weak_from_this()] {
                if (const auto self = weak.lock())
                    self->write();
            });
    }

    // Logs only the first of several failures in a row. Each later change tries again to write the file.
    void report(const std::string& problem) MIRROLET_REQUIRES(fileMutex) MIRROLET_EXCLUDES(valuesMutex) {
        if (problem.empty()) {
            failing = false;
            return;
        }
        {
            const MutexLock lock(valuesMutex);
            dirty = true;
        }
        if (!std::exchange(failing, true))
            NSLog("UserDefaults: cannot write " + path + " (" + problem +
                  "); changes are kept in memory only");
    }

    const std::string path;
    /// Locked while the file is written, so that two threads do not write at once.
    Mutex fileMutex MIRROLET_ACQUIRED_BEFORE(valuesMutex);
    dispatch::Executor::TimerNumber pendingWrite MIRROLET_GUARDED_BY(valuesMutex) = 0;
    bool dirty MIRROLET_GUARDED_BY(valuesMutex) = false;
    bool writable MIRROLET_GUARDED_BY(valuesMutex) = true;
    bool failing MIRROLET_GUARDED_BY(fileMutex) = false;
};

UserDefaults& UserDefaults::standard() {
    // Never destroyed, because other objects that live as long as the process use the defaults. The program
    // calls flush() at exit.
    static auto& defaults = *new UserDefaults(userConfigFolder() + "/mirrolet/defaults.json");
    return defaults;
}

UserDefaults::UserDefaults(std::string filePath) : state(std::make_shared<State>(std::move(filePath))) {
    state->load();
}

UserDefaults::~UserDefaults() {
    state->write();
    state->queue.reset();
}

PropertyList UserDefaults::object(const std::string& key) const {
    const MutexLock lock(state->valuesMutex);
    const auto found = state->values.find(key);
    return found == state->values.end() ? PropertyList() : found->second;
}

void UserDefaults::set(const std::string& key, PropertyList value) {
    state->set(key, std::move(value));
}

void UserDefaults::flush() {
    state->write();
}

} // namespace mirrolet::platform
