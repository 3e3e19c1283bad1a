#pragma once

#include "platform/desktop/x11/server/X11Connection.h"

namespace mirrolet::platform::desktop::x11 {

/// Announces the errors that the requests of a scope may meet without being at fault. Does not wait for the
/// server: a request without effect at either end tells the sequence numbers between which the scope lies. A
/// request of another thread that falls between them is covered, too.
class ExpectErrors {
  public:
    ExpectErrors(const X11Connection& connection, ErrorSet expected)
        : connection(connection), range(connection.errorLog().beginRange(mark(), expected)) {}
    ~ExpectErrors() { connection.errorLog().endRange(range, mark()); }
    ExpectErrors(const ExpectErrors&) = delete;
    ExpectErrors& operator=(const ExpectErrors&) = delete;

  private:
    [[nodiscard]] std::uint32_t mark() const { return xcb_no_operation(connection.xcb()).sequence; }

    const X11Connection& connection;
    const std::uint64_t range;
};

} // namespace mirrolet::platform::desktop::x11
