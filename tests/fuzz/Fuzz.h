#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

namespace mirrolet::fuzz {

inline void expect(bool holds) {
    if (!holds)
        std::abort();
}

inline std::string_view textOf(const std::uint8_t* data, std::size_t size) {
    return {reinterpret_cast<const char*>(data), size};
}

/// Reads a fuzzer's input from start to end. After the end byte() returns 0.
class Bytes {
  public:
    explicit Bytes(std::string_view bytes) : rest(bytes) {}

    [[nodiscard]] bool atEnd() const { return rest.empty(); }

    std::uint8_t byte() { return atEnd() ? std::uint8_t{0} : static_cast<std::uint8_t>(take(1).front()); }

    /// Returns the next `count` bytes, or all bytes that are left if these are fewer.
    std::string_view take(std::size_t count) {
        const auto taken = rest.substr(0, count);
        rest.remove_prefix(taken.size());
        return taken;
    }

  private:
    std::string_view rest;
};

} // namespace mirrolet::fuzz
