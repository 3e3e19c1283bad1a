#pragma once

#include <QVariantAnimation>

#include <functional>

namespace mirrolet::platform {

/// An animation that moves an alpha value over time.
class AlphaAnimation {
  public:
    explicit AlphaAnimation(std::function<void(double)> apply);

    void run(double from, double target, double seconds);
    void stop() { animation.stop(); }

  private:
    QVariantAnimation animation;
};

} // namespace mirrolet::platform
