#pragma once

#include "bench/program/Series.h"

#include <chrono>

namespace mirrolet::bench {

/// Says how long each measurement takes, and how often each figure is measured.
struct Effort {
    std::chrono::seconds time{5};
    int rounds = 5;
};

/// Holds the cost of a thread that only wakes a second thread, fifteen times a second. Every program that
/// shows fifteen frames a second costs at least as much, so the cost shows how fast the machine is.
struct WakeFigures {
    Series processor; ///< Milliseconds of processor time a second.
    Series wake;      ///< Microseconds of processor time for each wake-up.
};
WakeFigures measureWakes(const Effort& effort);

/// Holds the cost of Mirrolet and the cost of a minimal Qt program (`qtSum`, `ratio`). Both mirror the same
/// window. Processor times are in milliseconds a second, without the time that the X server uses for the
/// mirrored window alone.
struct MirrorFigures {
    Series program, wakes, server, sum;
    Series qtSum;
    Series ratio;  ///< The value of `sum` divided by `qtSum`.
    Series memory; ///< The peak resident memory of Mirrolet in MB.
};
MirrorFigures measureMirror(const Effort& effort, int framesPerSecond);

/// Holds what Mirrolet costs while it waits for a call and fifty other windows are open.
struct IdleFigures {
    Series processor; ///< Milliseconds of processor time a second.
    Series wakes;     ///< The wake-ups of all threads for each second.
};
IdleFigures measureIdle(const Effort& effort);

/// Measures the time in milliseconds from the start of Mirrolet until its icon is drawn in the tray.
Series measureStart(const Effort& effort);
/// Measures the time in milliseconds from the end of the source window until the mirror is gone.
Series measureEnd(const Effort& effort);

} // namespace mirrolet::bench
