#pragma once

#include <QVariantAnimation>

#include <functional>

namespace mirrolet::platform {

/// Changes an alpha value (opacity) step by step from one value to another.
class AlphaAnimation {
  public:
    explicit AlphaAnimation(std::function<void(double)> apply);

    void run(double from, double target, double seconds);
    void stop() { animation.stop(); }

  private:
    QVariantAnimation animation;
};

} // namespace mirrolet::platform
