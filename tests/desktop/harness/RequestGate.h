#pragma once

#include <cstddef>
#include <functional>
#include <mutex>
#include <string>
#include <thread>

namespace mirrolet::harness {

class XServer;

/// A gate between one client and the server. It passes the client's requests on one by one, so that a test
/// can act between any two of them. The client must end before the gate is destroyed.
class RequestGate {
  public:
    explicit RequestGate(const XServer& xServer);
    ~RequestGate();
    RequestGate(const RequestGate&) = delete;
    RequestGate& operator=(const RequestGate&) = delete;

    /// Returns the display name that the client must use.
    [[nodiscard]] const std::string& display() const { return name; }
    /// Runs the action once on the gate's thread, after that many more requests have passed and before the
    /// next one passes. The action may call after() again.
    void after(unsigned requests, std::function<void()> action);

  private:
    void run();
    void passRequests();
    [[nodiscard]] std::size_t firstLength() const;
    void act();

    std::string name;
    int listener;
    int server;
    std::string waiting; ///< The client's bytes that do not make up a whole request yet.
    bool greeted = false;
    std::mutex actionMutex; ///< Guards `left` and `next`.
    unsigned left = 0;
    std::function<void()> next;
    std::thread thread;
};

} // namespace mirrolet::harness
