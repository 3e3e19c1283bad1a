#pragma once

#include <chrono>
#include <cstddef>
#include <iostream>
#include <string>

namespace mirrolet::bench {

/// Calls `read`, which reads the list of windows and returns how many windows have a title. Prints that
/// number and the time that the call took in milliseconds.
template <typename Read> void answerOnce(Read read) {
    const auto start = std::chrono::steady_clock::now();
    const std::size_t found = read();
    const std::chrono::duration<double, std::milli> time = std::chrono::steady_clock::now() - start;
    std::cout << found << ' ' << time.count() << std::endl;
}

} // namespace mirrolet::bench
