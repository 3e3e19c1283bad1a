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

/// Logs each unexpected error of the server once, with the request's name. Such an error is a fault of ours.
/// Any thread.
class ErrorLog {
  public:
    explicit ErrorLog(const Extensions& extensions) : extensions(extensions) {}

    /// Begins a range of requests, which follow the one of this sequence number and may meet these errors.
    /// Returns the range's number for endRange().
    std::uint64_t beginRange(std::uint32_t sequence, ErrorSet expected);
    /// Ends a range before the request of this sequence number.
    void endRange(std::uint64_t number, std::uint32_t sequence);
    /// Forgets the ranges before this sequence number, because the errors of all requests before it have been
    /// noted.
    void noteAnswered(std::uint32_t sequence);

    /// Logs the error unless a range or `expected` holds it. A caller that waits for its request's reply
    /// names the errors in `expected`, because the range may be forgotten before the caller reads the reply.
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

    /// Right also when the sequence numbers have wrapped around.
    static bool precedes(std::uint32_t earlier, std::uint32_t later) {
        return static_cast<std::int32_t>(earlier - later) < 0;
    }
    [[nodiscard]] bool isExpected(std::uint32_t sequence, XError error) const MIRROLET_REQUIRES(rangesMutex);

    const Extensions& extensions;
    Mutex rangesMutex;
    std::deque<Range> ranges MIRROLET_GUARDED_BY(rangesMutex);
    std::uint64_t lastNumber MIRROLET_GUARDED_BY(rangesMutex) = 0;
    /// Major and minor opcode, error.
    std::set<std::tuple<std::uint8_t, std::uint16_t, std::uint8_t>> logged MIRROLET_GUARDED_BY(rangesMutex);
};

} // namespace mirrolet::platform::desktop::x11
