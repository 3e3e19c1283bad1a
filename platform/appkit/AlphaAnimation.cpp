#include "platform/appkit/AlphaAnimation.h"

#include <utility>

namespace mirrolet::platform {

AlphaAnimation::AlphaAnimation(std::function<void(double)> apply) {
    animation.setEasingCurve(QEasingCurve::InOutSine);
    QObject::connect(&animation, &QVariantAnimation::valueChanged, &animation,
                     [apply = std::move(apply)](const QVariant& value) { apply(value.toDouble()); });
}

void AlphaAnimation::run(double from, double target, double seconds) {
    animation.stop();
    animation.setStartValue(from);
    animation.setEndValue(target);
    animation.setDuration(static_cast<int>(seconds * 1000));
    animation.start();
}

} // namespace mirrolet::platform
