#include "platform/foundation/UserDefaults.h"

#include "platform/dispatch/DispatchQueue.h"
#include "platform/dispatch/Executor.h"
#include "platform/foundation/ConfigFolder.h"
#include "platform/foundation/NSLog.h"
#include "platform/foundation/PropertyListFile.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <fcntl.h>
#include <mutex>
#include <utility>

namespace mirrolet::platform {

namespace {

constexpr double writeDelay = 0.3; // Seconds after the last change.

std::string timeStamp() {
    const auto now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    char buffer[32];
    return {buffer, std::strftime(buffer, sizeof buffer, "%Y%m%d-%H%M%S", &local)};
}

/// Renames the file to an unused name and returns that; empty if that failed.
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
        values = std::move(content.values);
        if (content.problem.empty())
            return;
        const auto name = setAside(path);
        writable = !name.empty();
        NSLog("UserDefaults: cannot read " + path + " (" + content.problem + "); " +
              (writable ? "it is now " + name : "it stays, and no change will be saved"));
    }

    void set(const std::string& key, PropertyList value) {
        const std::lock_guard lock(mutex);
        auto& stored = values[key];
        if (!dirty && stored == value)
            return;
        stored = std::move(value);
        dirty = true;
        if (writable)
            scheduleWrite();
    }

    void write() {
        const std::lock_guard oneWriter(writing);
        PropertyList::Dictionary copy;
        {
            const std::lock_guard lock(mutex);
            if (!dirty || !writable)
                return;
            copy = values;
            dirty = false;
        }
        report(PropertyListFile::write(path, copy));
    }

    mutable std::mutex mutex;
    PropertyList::Dictionary values;
    /// Made by the first change, because a program that only reads needs no thread.
    std::unique_ptr<DispatchQueue> queue;

  private:
    // Called with the mutex held.
    void scheduleWrite() {
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

    // A failure is logged once. Each later change tries again, silently.
    void report(const std::string& problem) {
        if (problem.empty()) {
            failing = false;
            return;
        }
        {
            const std::lock_guard lock(mutex);
            dirty = true;
        }
        if (!std::exchange(failing, true))
            NSLog("UserDefaults: cannot write " + path + " (" + problem +
                  "); changes are kept in memory only");
    }

    const std::string path;
    std::mutex writing; ///< Taken before the other one.
    dispatch::Executor::TimerNumber pendingWrite = 0;
    bool dirty = false;
    bool writable = true;
    bool failing = false;
};

UserDefaults& UserDefaults::standard() {
    // Never destroyed, because other objects that live as long as the process write to the defaults. The
    // program flushes them at exit.
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
    const std::lock_guard lock(state->mutex);
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
