#pragma once

#include "platform/desktop/x11/server/ErrorSet.h"
#include "platform/desktop/x11/server/Extensions.h"

#include <xcb/xcb.h>

#include <cstdint>
#include <deque>
#include <mutex>
#include <set>
#include <tuple>

namespace mirrolet::platform::desktop::x11 {

/// Logs each error of the server that nobody has announced, once, with the request's name: such an error is a
/// fault of ours. Any thread.
class ErrorLog {
  public:
    explicit ErrorLog(const Extensions& extensions) : extensions(extensions) {}

    /// The requests from this sequence number on may meet these errors. Returns a number for `endRange()`.
    std::uint64_t beginRange(std::uint32_t sequence, ErrorSet expected);
    /// The requests from this sequence number on are not in the range any more.
    void endRange(std::uint64_t number, std::uint32_t sequence);
    /// All errors of earlier requests have been noted. Ranges that lie before are forgotten.
    void noteAnswered(std::uint32_t sequence);

    /// `expected`: what the waiting caller of the request expects, beside the ranges.
    void note(const xcb_generic_error_t& error, ErrorSet expected = {});
    [[nodiscard]] XError kindOf(const xcb_generic_error_t& error) const;

  private:
    struct Range {
        std::uint64_t number;
        std::uint32_t from;
        std::uint32_t to;
        bool ended;
        ErrorSet expected;
    };

    /// Sequence numbers wrap around.
    static bool precedes(std::uint32_t earlier, std::uint32_t later) {
        return static_cast<std::int32_t>(earlier - later) < 0;
    }
    [[nodiscard]] bool isExpected(std::uint32_t sequence, XError error) const;

    const Extensions& extensions;
    std::mutex rangesMutex; ///< Guards what follows.
    std::deque<Range> ranges;
    std::uint64_t lastNumber = 0;
    std::set<std::tuple<std::uint8_t, std::uint16_t, std::uint8_t>> logged; ///< Request and error.
};

} // namespace mirrolet::platform::desktop::x11
