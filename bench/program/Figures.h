#pragma once

#include "bench/program/Series.h"

#include <chrono>

namespace mirrolet::bench {

/// The time of one measurement, and the number of measurements of each figure.
struct Effort {
    std::chrono::seconds time{5};
    int rounds = 5;
};

/// The cost of a thread that wakes fifteen times a second and only wakes a second thread. No program that
/// shows fifteen frames a second can cost less. The figure therefore shows how fast the machine is.
struct WakeFigures {
    Series processor; ///< In milliseconds a second.
    Series wake;      ///< In microseconds a wake-up.
};
WakeFigures measureWakes(const Effort& effort);

/// Mirrolet beside a minimal Qt program with the same source. Processor times are in milliseconds a second.
/// The X server's time for the source alone is subtracted.
struct MirrorFigures {
    Series program, wakes, server, sum;
    Series qtSum;
    Series ratio;  ///< `sum` divided by `qtSum`.
    Series memory; ///< In MB.
};
MirrorFigures measureMirror(const Effort& effort, int framesPerSecond);

/// Mirrolet while it waits for a call, with fifty other windows.
struct IdleFigures {
    Series processor; ///< In milliseconds a second.
    Series wakes;     ///< Wake-ups of all threads for each second.
};
IdleFigures measureIdle(const Effort& effort);

/// Measures the milliseconds from the start of the process until its icon is seen in the tray.
Series measureStart(const Effort& effort);
/// Measures the milliseconds from the end of the mirrored window until the mirror is gone.
Series measureEnd(const Effort& effort);

} // namespace mirrolet::bench
