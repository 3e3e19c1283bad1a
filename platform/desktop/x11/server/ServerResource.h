#pragma once

#include "platform/desktop/x11/server/ExpectErrors.h"

#include <cstdint>
#include <utility>

namespace mirrolet::platform::desktop::x11 {

/// Owner of something that a request made on the server: gives it back with `Free` when destroyed. Empty when
/// moved from. The connection must outlive it. The server keeps requests in order, so what was asked for
/// before stays whole.
/// Given with an error, the resource can vanish on the server together with a window of another program, or
/// may never have been made there; freeing it may then meet this error.
template <auto Free, XError... Vanished> class ServerResource {
  public:
    ServerResource() = default;
    ServerResource(X11Connection& connection, std::uint32_t id) : connection(&connection), number(id) {}
    ServerResource(ServerResource&& other) noexcept
        : connection(other.connection), number(std::exchange(other.number, 0)) {}
    ServerResource& operator=(ServerResource&& other) noexcept {
        std::swap(connection, other.connection);
        std::swap(number, other.number);
        return *this;
    }
    ~ServerResource() {
        if (number == 0)
            return;
        if constexpr (sizeof...(Vanished) > 0) {
            const ExpectErrors vanished(*connection, {Vanished...});
            Free(connection->xcb(), number);
        } else {
            Free(connection->xcb(), number);
        }
    }

    [[nodiscard]] std::uint32_t id() const { return number; }
    explicit operator bool() const { return number != 0; }
    /// Forgets it: the server has freed it by itself.
    void release() { number = 0; }

  private:
    X11Connection* connection = nullptr;
    std::uint32_t number = 0;
};

} // namespace mirrolet::platform::desktop::x11
