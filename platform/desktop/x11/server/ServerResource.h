#pragma once

#include "platform/desktop/x11/server/ExpectErrors.h"

#include <cstdint>
#include <utility>

namespace mirrolet::platform::desktop::x11 {

/// Owns a resource that a request made on the server. The destructor frees the resource with `Free`. Owns
/// nothing after it has been moved from. The connection must outlive this object. Earlier requests that use
/// the resource are not disturbed, because the server carries out requests in order.
///
/// `Vanished` names the error that `Free` may meet if the server has freed the resource together with a
/// window of another program, or has never made the resource.
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
    /// Forgets the resource, because the server has freed it.
    void release() { number = 0; }

  private:
    X11Connection* connection = nullptr;
    std::uint32_t number = 0;
};

} // namespace mirrolet::platform::desktop::x11
