#include "tests/desktop/harness/RequestGate.h"

#include "tests/desktop/harness/HarnessError.h"
#include "tests/desktop/harness/XServer.h"

#include <array>
#include <cstdint>
#include <cstring>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>
#include <utility>

namespace mirrolet::harness {

namespace {

constexpr int portOfDisplay0 = 6000;

int makeSocket(int family) {
    return socket(family, SOCK_STREAM | SOCK_CLOEXEC, 0);
}

int connectTo(const XServer& server) {
    const int own = makeSocket(AF_UNIX);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    ("/tmp/.X11-unix/X" + server.display().substr(1)).copy(address.sun_path, sizeof address.sun_path - 1);
    if (connect(own, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0)
        throw HarnessError("cannot connect to display " + server.display());
    return own;
}

/// Reads the bytes that have arrived at the descriptor `from`, and appends them to `bytes`. Returns false at
/// the end of the stream.
bool readSome(int from, std::string& bytes) {
    std::array<char, 65536> block{};
    const ssize_t count = read(from, block.data(), block.size());
    if (count > 0)
        bytes.append(block.data(), static_cast<std::size_t>(count));
    return count > 0;
}

void writeAll(int to, const char* bytes, std::size_t length) {
    for (ssize_t count = 0; length > 0 && (count = send(to, bytes, length, MSG_NOSIGNAL)) > 0;) {
        bytes += count;
        length -= static_cast<std::size_t>(count);
    }
}

template <typename Number> std::size_t numberAt(const std::string& bytes, std::size_t place) {
    Number number = 0;
    std::memcpy(&number, bytes.data() + place, sizeof number);
    return number;
}

std::size_t padded(std::size_t length) {
    return (length + 3) / 4 * 4;
}

} // namespace

/// Listens on a local TCP port instead of a Unix socket in the test's folder, because a display name such as
/// "127.0.0.1:5" can name a port but no path. The kernel chooses the port.
RequestGate::RequestGate(const XServer& xServer) : listener(makeSocket(AF_INET)), server(connectTo(xServer)) {
    sockaddr_in own{};
    own.sin_family = AF_INET;
    own.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    auto* address = reinterpret_cast<sockaddr*>(&own);
    socklen_t length = sizeof own;
    if (bind(listener, address, length) != 0 || listen(listener, 1) != 0 ||
        getsockname(listener, address, &length) != 0)
        throw HarnessError("cannot listen for a client");
    name = "127.0.0.1:" + std::to_string(ntohs(own.sin_port) - portOfDisplay0);
    thread = std::thread([this] { run(); });
}

RequestGate::~RequestGate() {
    shutdown(listener, SHUT_RDWR);
    thread.join();
    close(listener);
}

void RequestGate::after(unsigned requests, std::function<void()> action) {
    const std::lock_guard lock(actionMutex);
    left = requests;
    next = std::move(action);
}

void RequestGate::run() {
    const int client = accept4(listener, nullptr, nullptr, SOCK_CLOEXEC);
    const int atOnce = 1;
    setsockopt(client, IPPROTO_TCP, TCP_NODELAY, &atOnce, sizeof atOnce);
    std::array<pollfd, 2> ends{{{client, POLLIN, 0}, {server, POLLIN, 0}}};
    for (bool open = client >= 0; open && poll(ends.data(), ends.size(), -1) > 0;) {
        std::string answers;
        if (ends[1].revents != 0)
            open = readSome(server, answers);
        writeAll(client, answers.data(), answers.size());
        if (ends[0].revents != 0)
            open = readSome(client, waiting) && open;
        passRequests();
    }
    close(server);
    if (client >= 0)
        close(client);
}

void RequestGate::passRequests() {
    for (auto length = firstLength(); length > 0 && length <= waiting.size(); length = firstLength()) {
        if (greeted)
            act();
        greeted = true;
        writeAll(server, waiting.data(), length);
        waiting.erase(0, length);
    }
}

/// Returns the size in bytes of the first request in `waiting`. Returns 0 if the bytes that state the size
/// have not arrived yet.
std::size_t RequestGate::firstLength() const {
    if (!greeted) // The connection setup has two texts of variable length.
        return waiting.size() < 12 ? 0
                                   : 12 + padded(numberAt<std::uint16_t>(waiting, 6)) +
                                         padded(numberAt<std::uint16_t>(waiting, 8));
    if (waiting.size() < 8)
        return waiting.size() < 4 ? 0 : 4 * numberAt<std::uint16_t>(waiting, 2);
    const auto units = numberAt<std::uint16_t>(waiting, 2);
    return 4 * (units != 0 ? units : numberAt<std::uint32_t>(waiting, 4));
}

void RequestGate::act() {
    std::function<void()> action;
    {
        const std::lock_guard lock(actionMutex);
        if (next && left-- == 0)
            action = std::exchange(next, nullptr);
    }
    if (action)
        action();
}

} // namespace mirrolet::harness
