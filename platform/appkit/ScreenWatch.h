#pragma once

#include <QObject>

#include <functional>

class QScreen;

namespace mirrolet::platform {

/// A watch that calls a function when screens have come, gone or changed. A change of monitors causes a burst
/// of events. The function is called once, after the burst. Main thread.
class ScreenWatch {
  public:
    explicit ScreenWatch(std::function<void()> changed);

  private:
    void watch(QScreen& screen);
    void schedule();

    std::function<void()> changed;
    QObject connections; ///< Ends the connections together with this object.
    bool scheduled = false;
};

} // namespace mirrolet::platform
