#pragma once

#include "platform/dispatch/Executor.h"

#include <memory>

namespace mirrolet::platform::dispatch {

/// Runs its tasks on the application's event loop. Several posts in a row wake the loop once. A task that
/// opens a nested event loop (a modal alert) does not hold up the tasks after it. A task that is posted by
/// another task runs on a later turn.
class MainExecutor final : public Executor {
  public:
    MainExecutor();
    ~MainExecutor() override;

    void post(Task task) override;
    TimerNumber callAt(TimePoint deadline, Task task) override;
    void cancel(TimerNumber number) override;
    /// Does nothing, because the main queue lives as long as the process.
    void shutDown() override {}

  private:
    class Receiver;
    std::unique_ptr<Receiver> receiver;
};

} // namespace mirrolet::platform::dispatch
