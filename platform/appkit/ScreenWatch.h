#pragma once

#include <QObject>

#include <functional>

class QScreen;

namespace mirrolet::platform {

/// Tells that screens have come, gone or changed. A change of monitors comes as a burst of events, which is
/// told of once, when the burst is over. Main thread.
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
