#pragma once

#include "platform/desktop/x11/server/X11Connection.h"

#include <cstdint>
#include <optional>

namespace mirrolet::platform::desktop::x11 {

/// Names the errors that are expected of all requests in a scope. Must be a local variable of that scope.
///
/// Does not wait for the server. The constructor and the destructor each send a request that has no effect,
/// because the sequence numbers of these two requests mark the ends of the scope. Requests that another
/// thread makes meanwhile are in the scope as well. The two requests are not sent if the enclosing scopes of
/// the same thread already expect the same errors.
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
    const ErrorSet all; ///< The errors expected in this scope and in the scopes around it.
    std::optional<std::uint64_t> range;
};

} // namespace mirrolet::platform::desktop::x11
