#pragma once

#include <memory>
#include <string>

using GVariant = struct _GVariant;
using GDBusConnection = struct _GDBusConnection;

namespace mirrolet::harness {

class SessionBus;

/// Releases a value that was sent over the session bus.
struct UnrefValue {
    void operator()(GVariant* value) const;
};
using BusValue = std::unique_ptr<GVariant, UnrefValue>;

/// Calls methods of other programs over the session bus.
class BusClient {
  public:
    /// Connects to the bus. Throws HarnessError if that fails.
    explicit BusClient(const SessionBus& bus);

    struct Method {
        std::string service, object, interface, name;
    };
    /// Calls the method and returns its results as a tuple. Takes ownership of newly made `arguments`. Sends
    /// the file descriptor along, unless it is -1. In the arguments the handle 0 stands for this descriptor.
    /// Throws HarnessError if the method fails.
    BusValue call(const Method& method, GVariant* arguments, int descriptor = -1) const;

  private:
    struct Close {
        void operator()(GDBusConnection* connection) const;
    };
    std::unique_ptr<GDBusConnection, Close> connection;
};

} // namespace mirrolet::harness
