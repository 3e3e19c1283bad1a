#pragma once

#include <QObject>

#include <functional>

class QScreen;

namespace mirrolet::platform {

/// Calls a function after screens were added, removed or changed. Such a change causes many events in a row,
/// but the function is called only once, after the last event. Main thread.
class ScreenWatch {
  public:
    explicit ScreenWatch(std::function<void()> changed);

  private:
    void watch(QScreen& screen);
    void schedule();

    std::function<void()> changed;
    QObject connections; ///< Qt ends the signal connections when this member is destroyed.
    bool scheduled = false;
};

} // namespace mirrolet::platform
