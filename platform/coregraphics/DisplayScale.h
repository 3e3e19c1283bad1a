#pragma once

#include <atomic>

namespace mirrolet::platform {

/// Device pixels per point, one value for the whole process. The application object sets it at start; until
/// then it is 1. Any thread.
class DisplayScale {
  public:
    [[nodiscard]] static double current() { return value.load(std::memory_order_relaxed); }
    static void setCurrent(double pixelsPerPoint) { value.store(pixelsPerPoint, std::memory_order_relaxed); }

  private:
    static inline std::atomic<double> value = 1;
};

} // namespace mirrolet::platform
