#pragma once

#include "platform/desktop/x11/server/X11Connection.h"

#include <cstdint>
#include <optional>

namespace mirrolet::platform::desktop::x11 {

/// Names the errors that the requests of a scope may meet without being at fault. For local variables only.
///
/// Does not wait for the server. A request without effect at either end of the scope gives the sequence
/// numbers between which the scope lies. Requests that another thread makes in between are in the scope as
/// well. A scope costs nothing if the scopes around it, on the same thread, expect the same errors already.
class ExpectErrors {
  public:
    ExpectErrors(const X11Connection& connection, ErrorSet expected)
        : connection(connection), around(innermost), all(expectedAround() | expected) {
        if (all != expectedAround())
            range = connection.errorLog().beginRange(mark(), expected);
        innermost = this;
    }
    ~ExpectErrors() {
        innermost = around;
        if (range)
            connection.errorLog().endRange(*range, mark());
    }
    ExpectErrors(const ExpectErrors&) = delete;
    ExpectErrors& operator=(const ExpectErrors&) = delete;

  private:
    [[nodiscard]] std::uint32_t mark() const { return xcb_no_operation(connection.xcb()).sequence; }
    [[nodiscard]] ErrorSet expectedAround() const {
        return around && &around->connection == &connection ? around->all : ErrorSet{};
    }

    inline static thread_local const ExpectErrors* innermost = nullptr;

    const X11Connection& connection;
    const ExpectErrors* const around;
    const ErrorSet all; ///< Expected in this scope and the scopes around it.
    std::optional<std::uint64_t> range;
};

} // namespace mirrolet::platform::desktop::x11
