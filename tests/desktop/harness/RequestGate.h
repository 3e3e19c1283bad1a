#pragma once

#include <cstddef>
#include <functional>
#include <mutex>
#include <string>
#include <thread>

namespace mirrolet::harness {

class XServer;

/// Stands between one client and the server and lets its requests through one by one, so that something else
/// can happen between any two of them. The client must have gone before the gate does.
class RequestGate {
  public:
    explicit RequestGate(const XServer& xServer);
    ~RequestGate();
    RequestGate(const RequestGate&) = delete;
    RequestGate& operator=(const RequestGate&) = delete;

    /// What the client is to connect to.
    [[nodiscard]] const std::string& display() const { return name; }
    /// Once, when so many more requests have passed and the next one waits, on the gate's thread. May ask for
    /// the next action itself.
    void after(unsigned requests, std::function<void()> action);

  private:
    void run();
    void passRequests();
    [[nodiscard]] std::size_t firstLength() const;
    void act();

    std::string name;
    int listener;
    int server;
    std::string waiting; ///< Bytes of the client that make no whole request yet.
    bool greeted = false;
    std::mutex lock; ///< Guards the next two.
    unsigned left = 0;
    std::function<void()> next;
    std::thread thread;
};

} // namespace mirrolet::harness
