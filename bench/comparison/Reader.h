#pragma once

#include <chrono>
#include <cstddef>
#include <iostream>
#include <string>

namespace mirrolet::bench {

/// Reads the list of windows once for each line of standard input. Answers with the number of windows with a
/// title, and with the time in milliseconds.
template <typename Read> void answerOnce(Read read) {
    const auto start = std::chrono::steady_clock::now();
    const std::size_t found = read();
    const std::chrono::duration<double, std::milli> time = std::chrono::steady_clock::now() - start;
    std::cout << found << ' ' << time.count() << std::endl;
}

} // namespace mirrolet::bench
