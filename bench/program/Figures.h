#pragma once

#include "bench/program/Series.h"

#include <chrono>

namespace mirrolet::bench {

/// How long one measurement takes, and how often each is taken.
struct Effort {
    std::chrono::seconds time{5};
    int rounds = 5;
};

/// What a thread that wakes fifteen times a second costs that does nothing but wake a second one: the floor
/// under every program that shows fifteen frames a second, and a measure of the machine.
struct WakeFigures {
    Series processor; ///< Milliseconds a second.
    Series wake;      ///< Microseconds a wake-up.
};
WakeFigures measureWakes(const Effort& effort);

/// Mirrolet against a minimal Qt program on the same source. Processor times are milliseconds a second; those
/// of the X server are above what it needs for the source alone.
struct MirrorFigures {
    Series program, wakes, server, sum;
    Series qtSum;
    Series ratio;  ///< Of the two sums.
    Series memory; ///< MB.
};
MirrorFigures measureMirror(const Effort& effort, int framesPerSecond);

/// Waiting for a call among fifty other windows.
struct IdleFigures {
    Series processor; ///< Milliseconds a second.
    Series wakes;     ///< A second, of all threads.
};
IdleFigures measureIdle(const Effort& effort);

/// Milliseconds from the start of the process until its icon is seen in the tray.
Series measureStart(const Effort& effort);
/// Milliseconds from the end of the mirrored window until the mirror is gone.
Series measureEnd(const Effort& effort);

} // namespace mirrolet::bench
