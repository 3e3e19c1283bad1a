#pragma once

#include <cstddef>
#include <functional>
#include <mutex>
#include <string>
#include <thread>

namespace mirrolet::harness {

class XServer;

/// Passes the X requests of one client on to the X server, one by one, so that a test can act between any two
/// of them. The client must end before the gate is destroyed.
class RequestGate {
  public:
    explicit RequestGate(const XServer& xServer);
    ~RequestGate();
    RequestGate(const RequestGate&) = delete;
    RequestGate& operator=(const RequestGate&) = delete;

    /// Returns the display name that the client must use.
    [[nodiscard]] const std::string& display() const { return name; }
    /// Passes `requests` more requests on, and then runs `action` before the next request. The action runs
    /// once, on the gate's thread. The action may call after() again.
    void after(unsigned requests, std::function<void()> action);

  private:
    void run();
    void passRequests();
    [[nodiscard]] std::size_t firstLength() const;
    void act();

    std::string name;
    int listener;
    int server;
    /// Bytes from the client that the gate has not passed on yet. The last request may be incomplete.
    std::string waiting;
    bool greeted = false;
    std::mutex actionMutex; ///< Guards `left` and `next`.
    unsigned left = 0;
    std::function<void()> next;
    std::thread thread;
};

} // namespace mirrolet::harness
