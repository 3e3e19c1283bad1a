#pragma once

#include "platform/desktop/x11/server/ErrorSet.h"
#include "platform/desktop/x11/server/Extensions.h"
#include "platform/foundation/Mutex.h"

#include <xcb/xcb.h>

#include <cstdint>
#include <deque>
#include <set>
#include <tuple>

namespace mirrolet::platform::desktop::x11 {

/// Logs each unexpected error of the server once, with the request's name. An unexpected error is a fault of
/// this program. May be used by any thread.
class ErrorLog {
  public:
    explicit ErrorLog(const Extensions& extensions) : extensions(extensions) {}

    /// Begins a range of requests that may cause the `expected` errors. The range begins after the request
    /// with this sequence number. Returns a number to pass to endRange().
    std::uint64_t beginRange(std::uint32_t sequence, ErrorSet expected);
    /// Ends a range. The range ends before the request with this sequence number.
    void endRange(std::uint64_t number, std::uint32_t sequence);
    /// Forgets the ranges that end before this sequence number. Must be called only after note() has been
    /// called for the errors of all earlier requests.
    void noteAnswered(std::uint32_t sequence);

    /// Logs the error unless it is expected. An error is expected if the set `expected` holds it. It is also
    /// expected if a range contains the failed request and expects the error. A caller that waits for a reply
    /// must pass `expected`, because the range may already be forgotten when the reply is read.
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

    /// Returns whether one sequence number comes before the other. Sequence numbers may wrap around.
    static bool precedes(std::uint32_t earlier, std::uint32_t later) {
        return static_cast<std::int32_t>(earlier - later) < 0;
    }
    [[nodiscard]] bool isExpected(std::uint32_t sequence, XError error) const MIRROLET_REQUIRES(rangesMutex);

    const Extensions& extensions;
    Mutex rangesMutex;
    std::deque<Range> ranges MIRROLET_GUARDED_BY(rangesMutex);
    std::uint64_t lastNumber MIRROLET_GUARDED_BY(rangesMutex) = 0;
    /// The errors that have been logged. Each is stored as major opcode, minor opcode and error code.
    std::set<std::tuple<std::uint8_t, std::uint16_t, std::uint8_t>> logged MIRROLET_GUARDED_BY(rangesMutex);
};

} // namespace mirrolet::platform::desktop::x11
