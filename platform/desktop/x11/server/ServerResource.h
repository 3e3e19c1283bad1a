#pragma once

#include "platform/desktop/x11/server/ExpectErrors.h"

#include <cstdint>
#include <utility>

namespace mirrolet::platform::desktop::x11 {

/// Owns a resource that a request made on the server. The destructor frees the resource with `Free`. Earlier
/// requests that use the resource still succeed, because the server carries out requests in order. The
/// connection must outlive this object.
///
/// `Vanished` names the errors to expect from `Free`. Such an error means that the server never made the
/// resource, or has freed it already together with a window of another program.
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
    /// Gives the resource up without freeing it. To be called when the server has freed the resource already.
    void release() { number = 0; }

  private:
    X11Connection* connection = nullptr;
    std::uint32_t number = 0;
};

} // namespace mirrolet::platform::desktop::x11
