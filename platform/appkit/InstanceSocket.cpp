#include "platform/appkit/InstanceSocket.h"

#include "platform/foundation/NSLog.h"

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <optional>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <thread>
#include <unistd.h>

namespace mirrolet::platform {

namespace {

using Clock = std::chrono::steady_clock;
using Claim = InstanceSocket::Claim;

constexpr char done = 1;
constexpr int backlog = 16;
constexpr int socketType = SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK;

struct Address {
    sockaddr_un name{};
    socklen_t length = 0;

    [[nodiscard]] const sockaddr* get() const { return reinterpret_cast<const sockaddr*>(&name); }
};

/// Returns the display's name without a screen number. For example, ":0.1" and "unix:0" both give ":0".
std::string withoutScreen(std::string display) {
    if (display.starts_with("unix:"))
        display.erase(0, 4);
    const auto colon = display.rfind(':');
    const auto dot = display.find('.', colon == std::string::npos ? 0 : colon);
    return display.substr(0, dot);
}

/// Returns the address for a user and a display. The address is abstract: it begins with a zero byte and is
/// not a file. The kernel removes an abstract address when the last process that uses the address has ended.
Address addressFor(const std::string& display) {
    Address address;
    address.name.sun_family = AF_UNIX;
    const std::string text =
        "app.mirrolet.Mirrolet/" + std::to_string(getuid()) + '/' + withoutScreen(display);
    const auto length = std::min(text.size(), sizeof address.name.sun_path - 1);
    std::copy_n(text.begin(), length, address.name.sun_path + 1);
    address.length = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + 1 + length);
    return address;
}

bool isOfThisUser(const FileDescriptor& peer) {
    ucred credentials{};
    socklen_t length = sizeof credentials;
    return getsockopt(peer.get(), SOL_SOCKET, SO_PEERCRED, &credentials, &length) == 0 &&
           credentials.uid == getuid();
}

FileDescriptor listenAt(const Address& address) {
    FileDescriptor made(socket(AF_UNIX, socketType, 0));
    if (made && bind(made.get(), address.get(), address.length) == 0 && listen(made.get(), backlog) == 0)
        return made;
    return FileDescriptor();
}

bool waitsForByte(const FileDescriptor& peer, Clock::time_point deadline) {
    pollfd waited{peer.get(), POLLIN, 0};
    for (;;) {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now()).count();
        const int ready = poll(&waited, 1, static_cast<int>(std::max<std::int64_t>(left, 0)));
        if (ready >= 0 || errno != EINTR)
            return ready > 0;
    }
}

/// Asks the process that owns the address to show itself, and returns the outcome. Returns none if that
/// process has ended meanwhile or does not listen yet.
std::optional<Claim> ask(const Address& address, Clock::time_point deadline) {
    const FileDescriptor asking(socket(AF_UNIX, socketType, 0));
    // EAGAIN means that too many processes wait already, so the process that owns the address must be stuck.
    if (connect(asking.get(), address.get(), address.length) != 0)
        return errno == EAGAIN ? std::optional(Claim::noAnswer) : std::nullopt;
    if (!isOfThisUser(asking)) {
        NSLog("Mirrolet: another user holds the address of this program; further starts will not find it");
        return Claim::first;
    }
    if (!waitsForByte(asking, deadline))
        return Claim::noAnswer;
    char byte = 0;
    return read(asking.get(), &byte, 1) == 1 ? std::optional(Claim::handedOver) : std::nullopt;
}

} // namespace

InstanceSocket::Claim InstanceSocket::claim(const std::string& display, std::chrono::milliseconds patience) {
    const auto address = addressFor(display);
    const auto deadline = Clock::now() + patience;
    do {
        listening = listenAt(address);
        // If sockets do not work at all, no other process can be found, so this one counts as the first.
        if (listening || errno != EADDRINUSE)
            return Claim::first;
        if (const auto answer = ask(address, deadline))
            return *answer;
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    } while (Clock::now() < deadline);
    return Claim::noAnswer;
}

FileDescriptor InstanceSocket::accept() const {
    FileDescriptor asker(accept4(listening.get(), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK));
    return asker && isOfThisUser(asker) ? std::move(asker) : FileDescriptor();
}

void InstanceSocket::answer(const FileDescriptor& asker) {
    // A failure is ignored, because a process that has ended needs no answer.
    [[maybe_unused]] const auto sent = send(asker.get(), &done, 1, MSG_NOSIGNAL);
}

} // namespace mirrolet::platform
