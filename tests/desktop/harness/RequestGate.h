#pragma once

#include <cstddef>
#include <functional>
#include <mutex>
#include <string>
#include <thread>

namespace mirrolet::harness {

class XServer;

/// Stands between one client and the server and passes the client's requests on one by one, so that a test
/// can act between any two of them. The client must end before the gate is destroyed.
class RequestGate {
  public:
    explicit RequestGate(const XServer& xServer);
    ~RequestGate();
    RequestGate(const RequestGate&) = delete;
    RequestGate& operator=(const RequestGate&) = delete;

    /// The display name for the client.
    [[nodiscard]] const std::string& display() const { return name; }
    /// Runs the action once, on the gate's thread, when that many more requests have passed and the next one
    /// waits. The action may call this function again.
    void after(unsigned requests, std::function<void()> action);

  private:
    void run();
    void passRequests();
    [[nodiscard]] std::size_t firstLength() const;
    void act();

    std::string name;
    int listener;
    int server;
    std::string waiting; ///< The client's bytes that are not a whole request yet.
    bool greeted = false;
    std::mutex actionMutex; ///< Guards the next two.
    unsigned left = 0;
    std::function<void()> next;
    std::thread thread;
};

} // namespace mirrolet::harness
