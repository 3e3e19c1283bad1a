#pragma once

#include <atomic>

namespace mirrolet::platform {

/// Holds the number of device pixels per point, which is the same for the whole process. NSApplication sets
/// the number at start; before that the number is 1. Any thread.
class DisplayScale {
  public:
    [[nodiscard]] static double current() { return value.load(std::memory_order_relaxed); }
    static void setCurrent(double pixelsPerPoint) { value.store(pixelsPerPoint, std::memory_order_relaxed); }

  private:
    static inline std::atomic<double> value = 1;
};

} // namespace mirrolet::platform
