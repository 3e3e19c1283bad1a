#pragma once

#include <chrono>
#include <cstddef>
#include <iostream>
#include <string>

namespace mirrolet::bench {

/// A program that lives on reads the list of windows once for each line of its standard input. It answers
/// with how many windows with a title it found, and in how many milliseconds.
template <typename Read> void answerOnce(Read read) {
    const auto start = std::chrono::steady_clock::now();
    const std::size_t found = read();
    const std::chrono::duration<double, std::milli> time = std::chrono::steady_clock::now() - start;
    std::cout << found << ' ' << time.count() << std::endl;
}

} // namespace mirrolet::bench
